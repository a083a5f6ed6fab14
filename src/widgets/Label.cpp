#include "widgets/Label.h"

#include "widgets/ReadableSelection.h"

#include <QApplication>
#include <QEvent>

namespace ambulet {

namespace {

constexpr double legibleContrast = 4.5;

QColor mix(const QColor& from, const QColor& to, int percent) {
    const auto part = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    return {part(from.red(), to.red()), part(from.green(), to.green()),
            part(from.blue(), to.blue())};
}

// `wanted`, or the colour nearest to it on the way to `text` that can be read on `ground`.
QColor legible(const QColor& wanted, const QColor& text, const QColor& ground) {
    for (int percent = 0; percent < 100; ++percent) {
        const QColor color = mix(wanted, text, percent);
        if (contrastRatio(color, ground) >= legibleContrast) {
            return color;
        }
    }
    return text;
}

}  // namespace

QFont systemFont(int points, QFont::Weight weight) {
    QFont font;  // the family is the application's, also when that changes
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
        return legible(mix(text, ground, 35), text, ground);
    case LabelColor::TertiaryLabel:
        return legible(mix(text, ground, 50), text, ground);
    case LabelColor::Link:
        return legible(palette.color(QPalette::Link), text, ground);
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
    QPalette own;  // of one colour: the others go on following the application's
    own.setColor(QPalette::WindowText, labelColor(_color, QApplication::palette(this)));
    setPalette(own);
}

}  // namespace ambulet
