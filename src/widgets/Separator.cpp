#include "widgets/Separator.h"

#include "widgets/Contrast.h"

#include <QPainter>

namespace ambulet {

Separator::Separator(QWidget* parent) : QFrame(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Separator::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), separatorColor(palette()));
}

}  // namespace ambulet
