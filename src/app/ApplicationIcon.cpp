#include "app/ApplicationIcon.h"

#include "platform/Bundle.h"
#include "widgets/AfterFirstPaint.h"

#include <QApplication>

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

}  // namespace

QIcon applicationIcon(const Bundle& bundle) {
    return iconOfSizes({16, 22, 24, 32, 48, 64, 128, 256}, bundle);
}

void setApplicationIcon(const Bundle& bundle) {
    QApplication::setWindowIcon(iconOfSizes({16, 22, 24, 32}, bundle));
    // Decoding the large sizes takes as long as creating the window.
    afterFirstPaint(*qApp, [&bundle] { QApplication::setWindowIcon(applicationIcon(bundle)); });
}

}  // namespace ambulet
