#include "widgets/Label.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QEvent>

namespace ambulet {

QFont systemFont(int points, QFont::Weight weight) {
    QFont font;  // without a family, so that it follows the application's
    font.setPixelSize(points);
    if (weight != QFont::Normal) {
        font.setWeight(weight);
    }
    return font;
}

QColor labelColor(LabelColor color, const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    const QColor ground = palette.color(QPalette::Window);
    switch (color) {
    case LabelColor::SecondaryLabel:
        return faintText(text, ground);
    case LabelColor::TertiaryLabel:
        return withContrast(mixed(text, ground, 0.5), text, ground, textContrast);
    case LabelColor::Link:
        return withContrast(palette.color(QPalette::Link), text, ground, textContrast);
    case LabelColor::Label:
        break;
    }
    return text;
}

Label::Label(const QString& text, const QFont& font, LabelColor color) : _color(color) {
    setTextFormat(Qt::PlainText);
    setText(text);
    setFont(font);
    updateColor();
}

void Label::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        updateColor();
    }
}

void Label::updateColor() {
    QPalette own;  // sets one colour only; the others follow the application's palette
    own.setColor(QPalette::WindowText, labelColor(_color, QApplication::palette(this)));
    setPalette(own);
}

}  // namespace ambulet
