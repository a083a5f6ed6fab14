#pragma once

#include <functional>

class QObject;

namespace ambulet {

/// Calls `action` once, from the event loop. If the program has shown windows, but none is on the
/// screen, the call waits until one has been painted, but at most a tenth of a second: a window on
/// another desktop may never be painted. If `receiver` is destroyed first, there is no call. Main
/// thread only.
void afterFirstPaint(QObject& receiver, std::function<void()> action);

}  // namespace ambulet
