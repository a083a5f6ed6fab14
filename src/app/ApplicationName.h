#pragma once

namespace ambulet {

/// Makes the bundle's display name the name by which assistive programs know the application. Qt
/// itself would take the process name, which window managers and the settings go by. To be called
/// before the application object is created.
void nameAccessibleApplication();

}  // namespace ambulet
