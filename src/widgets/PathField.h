#pragma once

#include <QLineEdit>

class QStyleOptionFrame;

namespace ambulet {

/// Shows the path of a file. The user can select and copy it, but not edit it. If the path is too
/// long for the field, the tooltip has the whole path, and the field shows it without its middle
/// while it does not have the keyboard focus. Without a path it shows the placeholder.
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
