#pragma once

#include "app/OtherApplications.h"

#include <QMenuBar>
#include <QObject>
#include <QPointer>
#include <QString>

#include <vector>

class QMainWindow;

namespace ambulet {

class AuxiliaryWindow;

/// The main menu: application menu, Window and Help.
///
/// Each window has its own menu bar with all the items, so that every item can be reached from the
/// window in front, even if the main window is closed. On macOS, all windows share one menu bar.
/// Main thread only.
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    explicit MainMenu(const QString& applicationName);
    ~MainMenu() override;

    /// Gives the window a menu bar, unless it has one already. F10 opens the bar's first menu. The
    /// window owns the bar; the bar is destroyed with the main menu at the latest.
    void installOn(QMainWindow& window);
    void installOn(AuxiliaryWindow& window);

  Q_SIGNALS:
    void aboutChosen();
    void gettingStartedChosen();

  private:
    QMenuBar* makeMenuBar();

    bool isInstalledOn(const QWidget& window) const;

    QString _applicationName;
    OtherApplications _otherApplications;
    std::vector<QPointer<QMenuBar>> _menuBars;
};

}  // namespace ambulet
