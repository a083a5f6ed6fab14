#pragma once

namespace ambulet {

/// Makes SIGTERM, SIGHUP and SIGINT quit the application like the Quit command, so that unsaved
/// settings are stored. The same signal a second time ends the process at once. Signals that were
/// ignored when the process was started stay ignored. Call this once, on the main thread, after the
/// application object was created.
void quitOnTerminationSignals();

}  // namespace ambulet
