#pragma once

#include <QPoint>

#include <memory>

namespace ambulet {

/// Hides and shows the windows of other applications. Main thread only.
class OtherApplications {
  public:
    OtherApplications();
    ~OtherApplications();

    /// Whether `hide` works here, that is, on X11 with a window manager that lists its windows.
    static bool canHide();

    /// Asks the window manager to minimise the windows of all other applications, except panels and
    /// the desktop. Does nothing if `canHide` is false.
    void hide();

    /// Restores the windows minimised by `hide` that have not been restored since.
    void show();

    /// Whether another application has a window that is not minimised and whose content has its
    /// upper left corner at `place`, in pixels of the screen. Always false if `canHide` is false.
    static bool haveWindowAt(QPoint place);

  private:
    class HiddenWindows;

    std::unique_ptr<HiddenWindows> _hidden;
};

}  // namespace ambulet
