#pragma once

#include <QLabel>

#include <optional>

namespace ambulet {

/// A line of text that acts like a button: a click with the primary button, or Space or Return
/// while it has the keyboard focus, sends `clicked`. Assistive programs see a button whose
/// description is the tooltip. The pointer over it is a hand.
///
/// Build it empty and set the text after: the accessibility bus takes a label that is built with
/// its text for a plain one.
class ClickableLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ClickableLabel(QWidget* parent = nullptr);

    /// Draws only the first `length` characters of the text, or the whole text if there is no
    /// length. For a view that covers the rest. The text itself does not change.
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
