#pragma once

namespace ambulet {

/// From now on SIGTERM, SIGHUP and SIGINT quit the application as the Quit command does, so that
/// nothing that is still to be stored is lost. The same signal once more ends the process at once.
/// Signals that the process was started to ignore stay ignored. To be called once, on the main
/// thread, after the application object was created.
void quitOnTerminationSignals();

}  // namespace ambulet
