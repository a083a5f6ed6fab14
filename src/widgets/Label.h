#pragma once

#include <QLabel>

namespace ambulet {

/// The system's font at a size in points (of which one is one device-independent pixel).
QFont systemFont(int points, QFont::Weight weight = QFont::Normal);

/// The colours of texts. All but the first are made from the palette's so that they stand back from
/// it, or out, and still have a contrast of 4.5 to 1 or more with the window's ground, as far as
/// the palette's text has it.
enum class LabelColor { Label, SecondaryLabel, TertiaryLabel, Link };

QColor labelColor(LabelColor color, const QPalette& palette);

/// A line or, with word wrap, a paragraph of plain text, whose colour follows the palette.
class Label final : public QLabel {
    Q_OBJECT

  public:
    Label(const QString& text, const QFont& font, LabelColor color);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void updateColor();

    LabelColor _color;
};

}  // namespace ambulet
