#pragma once

namespace ambulet {

/// Tells assistive programs the bundle's display name as the application's name. Qt itself would
/// tell them the process name. Call this before the application object is created.
void nameAccessibleApplication();

}  // namespace ambulet
