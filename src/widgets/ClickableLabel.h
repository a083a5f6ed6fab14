#pragma once

#include <QLabel>

namespace ambulet {

/// A text that acts like a button: a click with the primary button, or Space or Return while it has
/// the keyboard focus, sends `clicked`. Assistive programs see a button whose description is the
/// tooltip. The pointer over it is a hand.
///
/// Build it empty and set the text after: a label built with its text is taken for a plain one by
/// the accessibility bus.
class ClickableLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ClickableLabel(QWidget* parent = nullptr);

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
    bool _pressed = false;
};

}  // namespace ambulet
