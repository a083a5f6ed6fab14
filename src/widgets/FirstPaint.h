#pragma once

#include <functional>

class QWidget;

namespace ambulet {

/// Calls `then`, once and from the event loop, when the window has been painted for the first time,
/// or a tenth of a second from now if it has not been by then: one that is shown minimised or on
/// another desktop is not painted. Not at all where the window is destroyed before. Main thread
/// only.
void afterFirstPaint(QWidget& window, std::function<void()> then);

}  // namespace ambulet
