#pragma once

#include <cstdint>
#include <vector>

namespace ambulet {

/// Hides and shows the windows of other applications. Main thread only.
class OtherApplications {
  public:
    /// Whether `hide` works here: it needs X11 and a window manager that lists its windows.
    static bool canHide();

    /// Asks the window manager to minimise the windows of all other applications, except panels and
    /// the desktop. Does nothing if `canHide` is false.
    void hide();

    /// Restores those windows minimised by `hide` that still exist.
    void show();

  private:
    std::vector<std::uint32_t> _hidden;
};

}  // namespace ambulet
