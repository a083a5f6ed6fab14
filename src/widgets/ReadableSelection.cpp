#include "widgets/ReadableSelection.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace ambulet {

namespace {

constexpr double readable = 4.5;
constexpr int steps = 50;  // from a colour to black or white

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

class SelectionKeeper : public QObject {
  public:
    explicit SelectionKeeper(QWidget* widget) : QObject(widget), _widget(widget) {
        qApp->installEventFilter(this);  // widgets inside others are not told
        apply();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) {
            apply();
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    void apply() {
        const QPalette application = QApplication::palette(_widget);
        QPalette own = _widget->palette();
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            own.setColor(group, QPalette::Highlight,
                         readableGround(application.color(group, QPalette::Highlight),
                                        application.color(group, QPalette::HighlightedText),
                                        readable));
        }
        _widget->setPalette(own);
    }

    QWidget* _widget;
};

}  // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor readableGround(const QColor& ground, const QColor& ink, double ratio) {
    // Away from the ink.
    const QColor end =
        contrastRatio(ink, Qt::black) > contrastRatio(ink, Qt::white) ? Qt::black : Qt::white;
    QColor shade = ground;
    for (int step = 1; step <= steps && contrastRatio(shade, ink) < ratio; ++step) {
        const auto mix = [step](int from, int to) { return from + (to - from) * step / steps; };
        shade = QColor(mix(ground.red(), end.red()), mix(ground.green(), end.green()),
                       mix(ground.blue(), end.blue()));
    }
    return shade;
}

void keepSelectionReadable(QWidget* widget) {
    new SelectionKeeper(widget);
}

}  // namespace ambulet
