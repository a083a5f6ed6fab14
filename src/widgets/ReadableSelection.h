#pragma once

class QWidget;

namespace ambulet {

/// Gives selected text in `widget` a contrast of at least 4.5 to 1 with its ground, now and
/// whenever the application's palette changes: where the palette gives less, the ground is made
/// darker or lighter.
void keepSelectionReadable(QWidget* widget);

}  // namespace ambulet
