#pragma once

#include <QFrame>

namespace ambulet {

/// A horizontal line on the window's ground, with a contrast of 3 to 1. (A style's own lines have
/// as little as 1.2 to 1.)
class Separator final : public QFrame {
    Q_OBJECT

  public:
    explicit Separator(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {1, 1}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ambulet
