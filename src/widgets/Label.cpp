#include "widgets/Label.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double legibleContrast = 4.5;

// Relative luminance and contrast as WCAG 2 defines them.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mix(const QColor& from, const QColor& to, int percent) {
    const auto part = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    return {part(from.red(), to.red()), part(from.green(), to.green()),
            part(from.blue(), to.blue())};
}

// `wanted`, or the colour nearest to it on the way to `text` that can be read on `ground`.
QColor legible(const QColor& wanted, const QColor& text, const QColor& ground) {
    for (int percent = 0; percent < 100; ++percent) {
        const QColor color = mix(wanted, text, percent);
        if (contrast(color, ground) >= legibleContrast) {
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

bool Label::event(QEvent* event) {
    const bool handled = QLabel::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange) {
        updateColor();
    }
    return handled;
}

void Label::updateColor() {
    QPalette palette = QApplication::palette(this);
    palette.setColor(QPalette::WindowText, labelColor(_color, palette));
    setPalette(palette);
}
