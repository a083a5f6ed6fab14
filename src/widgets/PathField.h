#pragma once

#include <QLineEdit>

class QStyleOptionFrame;

namespace ambulet {

/// Shows a file's path, to read, select and copy; nobody types in it. A path that is too long for
/// the field is shortened in its middle while the field has no keyboard focus, and is whole in the
/// tooltip. Without a path it shows the placeholder.
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
