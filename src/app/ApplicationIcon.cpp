#include "app/ApplicationIcon.h"

#include "platform/Bundle.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

#include <initializer_list>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

QIcon iconOfSizes(std::initializer_list<int> sizes, const Bundle& bundle) {
    QIcon icon;
    for (const int size : sizes) {
        if (const auto path = bundle.resourcePath(u"ambulet-%1"_s.arg(size), u"png"_s, u"icon"_s)) {
            icon.addFile(*path, QSize(size, size));
        }
    }
    return icon;
}

// Sets the icon in all sizes after the first paint, because decoding the large sizes takes as long
// as creating the window.
class AfterFirstPaint final : public QObject {
  public:
    explicit AfterFirstPaint(const Bundle& bundle) : QObject(qApp), _bundle(bundle) {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose && qobject_cast<QWindow*>(watched)->isExposed()) {
            qApp->removeEventFilter(this);
            // The window is painted after this filter, when it handles the event itself.
            QMetaObject::invokeMethod(
                this,
                [this] {
                    QApplication::setWindowIcon(applicationIcon(_bundle));
                    deleteLater();
                },
                Qt::QueuedConnection);
        }
        return false;
    }

  private:
    const Bundle& _bundle;
};

}  // namespace

QIcon applicationIcon(const Bundle& bundle) {
    return iconOfSizes({16, 22, 24, 32, 48, 64, 128, 256}, bundle);
}

void setApplicationIcon(const Bundle& bundle) {
    QApplication::setWindowIcon(iconOfSizes({16, 22, 24, 32}, bundle));
    new AfterFirstPaint(bundle);
}

}  // namespace ambulet
