#pragma once

#include <QObject>
#include <QWidget>

#include <memory>

namespace ambulet {

/// Owns a window, which is loaded on first use and destroyed with the controller. Closing the
/// window only hides it. Main thread only.
class WindowController : public QObject {
    Q_OBJECT

  public:
    WindowController();
    ~WindowController() override;

    /// The window. The first call loads it.
    QWidget* window();

    bool isWindowLoaded() const { return _window != nullptr; }

    /// Shows the window in front of the program's other windows and gives it the keyboard focus.
    /// Loads the window if necessary.
    virtual void showWindow();

  protected:
    /// Creates the window. Called once, when the window is first used. Must not return null.
    virtual std::unique_ptr<QWidget> loadWindow() = 0;

    /// Called once, right after `loadWindow`.
    virtual void windowDidLoad() {}

  private:
    std::unique_ptr<QWidget> _window;
};

}  // namespace ambulet
