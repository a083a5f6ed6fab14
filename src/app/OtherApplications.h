#pragma once

#include <cstdint>
#include <vector>

namespace ambulet {

/// The windows of the other applications on the user's desktop. Main thread only.
class OtherApplications {
  public:
    /// Whether `hide` can do anything: on X11, under a window manager that lists its windows.
    static bool canHide();

    /// Minimises the windows of all other applications, but for panels and the desktop's own. The
    /// window manager may refuse. Does nothing where `canHide` is false.
    void hide();

    /// Restores the windows that `hide` minimised, as far as they are still there.
    void show();

  private:
    std::vector<std::uint32_t> _hidden;
};

}  // namespace ambulet
