#pragma once

#include "app/OtherApplications.h"

#include <QMenu>

namespace ambulet {

/// The application menu: About, Services, Hide and its kin, Quit. On macOS only About and Quit are
/// made here, and the toolkit moves them into the menu that it has made of the others.
class ApplicationMenu final : public QMenu {
    Q_OBJECT

  public:
    /// `applicationName`: the menu's title and the name in its items.
    ApplicationMenu(const QString& applicationName, QWidget* parent);

  Q_SIGNALS:
    void aboutChosen();

  private:
    void addHidingItems(const QString& applicationName);

    OtherApplications _otherApplications;
};

}  // namespace ambulet
