#pragma once

#include <QLineEdit>

namespace ambulet {

/// Shows a file's path, to read and to copy from; nobody types in it. A path too long for the field
/// is shortened in its middle while the field has no keyboard focus, and is whole in the tooltip.
class PathField : public QLineEdit {
    Q_OBJECT

  public:
    explicit PathField(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ambulet
