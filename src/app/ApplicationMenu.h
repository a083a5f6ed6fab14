#pragma once

#include <QMenu>

namespace ambulet {

class OtherApplications;

/// The application menu: About, Services, Hide, Hide Others, Show All and Quit. On macOS, Qt
/// provides an application menu; only About and Quit are made here, and Qt moves them to that menu.
class ApplicationMenu final : public QMenu {
    Q_OBJECT

  public:
    /// `applicationName` is the name in the items. `others` must outlive the menu.
    ApplicationMenu(const QString& title, const QString& applicationName, OtherApplications& others,
                    QWidget* parent);

  Q_SIGNALS:
    void aboutChosen();

  private:
    void addHidingItems(const QString& applicationName, OtherApplications& others);
};

}  // namespace ambulet
