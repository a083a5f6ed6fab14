#pragma once

#include <QFrame>

namespace ambulet {

/// A horizontal line with a contrast of at least 3 to 1 with the window's background. (The lines of
/// some styles have only 1.2 to 1.)
class Separator final : public QFrame {
    Q_OBJECT

  public:
    explicit Separator(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {1, 1}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ambulet
