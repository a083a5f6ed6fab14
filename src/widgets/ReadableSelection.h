#pragma once

class QWidget;

namespace ambulet {

/// Gives selected text in `widget` a contrast of at least 4.5 to 1 with its background, now and
/// whenever the application's palette changes. If the palette has a lower contrast, the background
/// is made darker or lighter.
void keepSelectionReadable(QWidget* widget);

}  // namespace ambulet
