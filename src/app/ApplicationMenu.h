#pragma once

#include "app/OtherApplications.h"

#include <QMenu>

namespace ambulet {

/// The application menu: About, Services, Hide, Hide Others, Show All and Quit. On macOS, Qt
/// provides the application menu itself; only About and Quit are made here, and Qt moves them into
/// it.
class ApplicationMenu final : public QMenu {
    Q_OBJECT

  public:
    /// `applicationName` is the menu's title and the name in its items.
    ApplicationMenu(const QString& applicationName, QWidget* parent);

  Q_SIGNALS:
    void aboutChosen();

  private:
    void addHidingItems(const QString& applicationName);

    OtherApplications _otherApplications;
};

}  // namespace ambulet
