#pragma once

#include <QList>
#include <QMenu>

namespace ambulet {

/// The Window menu: commands for the window in front and for all windows, and a list of the open
/// windows. The list is made each time the menu opens.
class WindowMenu final : public QMenu {
    Q_OBJECT

  public:
    WindowMenu(const QString& title, QWidget* parent);

  private:
    void minimizeFront();
    void zoomFront();
    void updateItems();
    void listWindows();

    QAction* _minimize;
    QAction* _zoom;
    QList<QAction*> _list;  // the items of the open windows, and the separator above them
};

}  // namespace ambulet
