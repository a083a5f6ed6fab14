#include "widgets/ReadableSelection.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>

namespace ambulet {

namespace {

class SelectionKeeper : public QObject {
  public:
    explicit SelectionKeeper(QWidget* widget) : QObject(widget), _widget(widget) {
        qApp->installEventFilter(this);  // among widgets, only windows get the event
        apply();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) {
            apply();
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    void apply() {
        const QPalette application = QApplication::palette(_widget);
        QPalette own = _widget->palette();
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QColor ink = application.color(group, QPalette::HighlightedText);
            own.setColor(group, QPalette::Highlight,
                         withContrast(application.color(group, QPalette::Highlight),
                                      blackOrWhite(ink), ink, textContrast));
        }
        _widget->setPalette(own);
    }

    QWidget* _widget;
};

}  // namespace

void keepSelectionReadable(QWidget* widget) {
    new SelectionKeeper(widget);
}

}  // namespace ambulet
