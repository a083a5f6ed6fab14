#pragma once

#include <QLabel>

namespace ambulet {

/// The application's font at a size in points. One point is one device-independent pixel.
QFont systemFont(int points, QFont::Weight weight = QFont::Normal);

/// The colours of texts: the palette's text colour, two fainter ones, and the palette's link
/// colour. The last three are adjusted to a contrast of at least 4.5 to 1 with the window's
/// background. If the text colour itself has less contrast, they may become the text colour.
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
