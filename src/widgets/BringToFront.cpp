#include "widgets/BringToFront.h"

#include <QWidget>

namespace ambulet {

void bringToFront(QWidget& window) {
    // showNormal() would also undo maximising.
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace ambulet
