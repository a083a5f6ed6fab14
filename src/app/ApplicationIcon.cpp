#include "app/ApplicationIcon.h"

#include "platform/Bundle.h"

namespace ambulet {

using namespace Qt::StringLiterals;

QIcon applicationIcon(const Bundle& bundle) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        if (const auto path = bundle.resourcePath(u"ambulet-%1"_s.arg(size), u"png"_s, u"icon"_s)) {
            icon.addFile(*path, QSize(size, size));
        }
    }
    return icon;
}

}  // namespace ambulet
