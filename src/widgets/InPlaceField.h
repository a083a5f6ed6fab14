#pragma once

#include <QLineEdit>

namespace ambulet {

/// A field that opens over what it edits, and says when its editing ends. Hidden, it says nothing:
/// whoever hides it has ended the editing.
class InPlaceField : public QLineEdit {
    Q_OBJECT

  public:
    explicit InPlaceField(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// Return or Enter.
    void insertNewline();
    /// Escape.
    void cancelOperation();
    /// The focus has gone to another control. Not sent while another window, a menu or a dialog has
    /// it for a time: then it comes back.
    void didEndEditing();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace ambulet
