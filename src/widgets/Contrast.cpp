#include "widgets/Contrast.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace ambulet {

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

}  // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

QColor blackOrWhite(const QColor& ground) {
    return contrastRatio(Qt::black, ground) > contrastRatio(Qt::white, ground) ? Qt::black
                                                                               : Qt::white;
}

QColor withContrast(const QColor& wanted, const QColor& towards, const QColor& other,
                    double ratio) {
    constexpr int steps = 100;
    for (int step = 0; step < steps; ++step) {
        const QColor color = mixed(wanted, towards, static_cast<double>(step) / steps);
        if (contrastRatio(color, other) >= ratio) {
            return color;
        }
    }
    return towards;
}

QColor faintText(const QColor& text, const QColor& ground) {
    return withContrast(mixed(text, ground, 0.35), text, ground, textContrast);
}

QColor groupRowColor(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.08);
}

QColor separatorColor(const QPalette& palette) {
    QColor color = palette.color(QPalette::Window);
    for (const QColor& ground : {color, palette.color(QPalette::Base), groupRowColor(palette)}) {
        color = withContrast(color, palette.color(QPalette::WindowText), ground, markContrast);
    }
    return color;
}

}  // namespace ambulet
