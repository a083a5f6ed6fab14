#pragma once

#include <QLineEdit>

namespace ambulet {

/// A field that opens over the text that it edits, and signals when editing ends. Hiding it ends
/// editing without a signal.
class InPlaceField : public QLineEdit {
    Q_OBJECT

  public:
    explicit InPlaceField(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// Return or Enter was pressed.
    void insertNewline();
    /// Escape was pressed.
    void cancelOperation();
    /// The focus has moved to another control. Not sent if another window, a menu or a dialog takes
    /// the focus, because the field then gets it back.
    void didEndEditing();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ambulet
