#pragma once

#include <QPushButton>

namespace ambulet {

/// A push button whose keyboard focus is marked by an outline with enough contrast. Fusion marks
/// the focus by a fill and a frame that differ too little from those of a button without the focus.
/// A held Return or Enter presses the button only once, unlike a QPushButton.
class Button : public QPushButton {
    Q_OBJECT

  public:
    using QPushButton::QPushButton;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace ambulet
