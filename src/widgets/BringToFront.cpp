#include "widgets/BringToFront.h"

#include <QWidget>

namespace ambulet {

void bringToFront(QWidget& window) {
    // Not showNormal(), which would also undo a zoom.
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace ambulet
