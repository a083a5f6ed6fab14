#pragma once

#include <functional>

class QObject;

namespace ambulet {

/// Calls `action` once, from the event loop. If windows of the program are visible, but none has
/// been painted yet, the call waits for the first painting, but at most a tenth of a second: a
/// window on another desktop may never be painted. If `receiver` is destroyed first, there is no
/// call. Main thread only.
void afterFirstPaint(QObject& receiver, std::function<void()> action);

}  // namespace ambulet
