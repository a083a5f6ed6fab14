#pragma once

#include <QMenuBar>
#include <QObject>
#include <QPointer>

class QMainWindow;

namespace ambulet {

/// The main menu: application menu, Window and Help. The titles are formatted once.
///
/// The menu bar is the main window's, or the whole program's where the platform has it so; the keys
/// work in every window that they are added to, also when the main window is closed. Main thread
/// only.
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    explicit MainMenu(const QString& applicationName);
    ~MainMenu() override;

    /// Hands the menu bar to the main window, which then owns it.
    void installOn(QMainWindow& window);

    /// Makes the items' keys work in a window that has no menu bar.
    void addKeysTo(QWidget& window) const;

    QMenuBar* menuBar() const { return _menuBar; }

  Q_SIGNALS:
    void aboutChosen();
    void gettingStartedChosen();

  private:
    QPointer<QMenuBar> _menuBar;
};

}  // namespace ambulet
