#pragma once

#include "widgets/LineLabel.h"

#include <optional>

namespace ambulet {

/// A line of text that acts like a button. It sends `clicked` on a click with the primary button,
/// and on Space or Return while it has the keyboard focus. Assistive programs see a button whose
/// description is the tooltip. The pointer over it is a hand.
///
/// Construct it without a text and set the text later. Otherwise QLabel's constructor creates the
/// accessible interface of a plain label.
class ClickableLabel : public LineLabel {
    Q_OBJECT

  public:
    explicit ClickableLabel(QWidget* parent = nullptr);

    /// Draws only the first `length` characters of the text, because another view covers the rest;
    /// without a length, the whole text. The text itself does not change.
    void setDrawnLength(std::optional<qsizetype> length);

  Q_SIGNALS:
    void clicked();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    std::optional<qsizetype> _drawnLength;
    bool _pressed = false;
};

}  // namespace ambulet
