#pragma once

#include <QObject>
#include <QWidget>

#include <memory>

namespace ambulet {

/// Owns a window from its first showing until the controller is destroyed. Closing the window only
/// hides it. Main thread only.
class WindowController : public QObject {
    Q_OBJECT

  public:
    WindowController();
    ~WindowController() override;

    /// The window; loaded by the first call.
    QWidget* window();

    bool isWindowLoaded() const { return _window != nullptr; }

    /// Shows the window in front of the program's others and gives it the keyboard; loads it first
    /// where that has not happened yet.
    virtual void showWindow();

  protected:
    /// Makes the window. Called once, by the first use of it; never null.
    virtual std::unique_ptr<QWidget> loadWindow() = 0;

    /// Called once, right after `loadWindow`.
    virtual void windowDidLoad() {}

  private:
    std::unique_ptr<QWidget> _window;
};

}  // namespace ambulet
