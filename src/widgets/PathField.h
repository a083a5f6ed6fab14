#pragma once

#include <QLineEdit>

class QStyleOptionFrame;

namespace ambulet {

/// Shows the path of a file. The user can select and copy the path, but not edit it. A path that is
/// too long for the field is shown without its middle while the field does not have the keyboard
/// focus. The tooltip always has the whole path. Without a path the field shows the placeholder.
class PathField : public QLineEdit {
    Q_OBJECT

  public:
    explicit PathField(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintLine(const QStyleOptionFrame& option, const QRect& space, const QString& line,
                   const QColor& ink);
};

}  // namespace ambulet
