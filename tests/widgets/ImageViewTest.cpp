#include "widgets/ImageView.h"

#include <QAccessible>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

// Paints a view of 200 x 100 points, on a screen with `ratio` pixels per point.
QImage shown(const QImage& image, double ratio = 1) {
    ImageView view;
    view.resize(200, 100);
    view.setImage(image, QStringLiteral("A picture"));
    QImage screen(QSize(200, 100) * ratio, QImage::Format_ARGB32);
    screen.setDevicePixelRatio(ratio);
    screen.fill(Qt::white);
    view.render(&screen, QPoint(), QRegion(), QWidget::RenderFlags());
    return screen;
}

QImage filled(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

// The bounding box of all pixels that are not white.
QRect painted(const QImage& screen) {
    QRect found;
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x) {
            if (screen.pixelColor(x, y) != Qt::white) {
                found |= QRect(x, y, 1, 1);
            }
        }
    }
    return found;
}

TEST(ImageView, aLargeImageIsScaledDownProportionallyAndCentred) {
    EXPECT_EQ(painted(shown(filled(400, 400, Qt::black))), QRect(50, 0, 100, 100));
    EXPECT_EQ(painted(shown(filled(800, 100, Qt::black))), QRect(0, 37, 200, 25));
}

TEST(ImageView, aSmallImageIsScaledUpProportionally) {
    EXPECT_EQ(painted(shown(filled(10, 10, Qt::black))), QRect(50, 0, 100, 100));
}

TEST(ImageView, anImageOfTheViewsSizeIsShownUnscaled) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        // The lines are one pixel wide. Scaling would make them grey.
        QImage lines =
            filled(static_cast<int>(200 * ratio), static_cast<int>(100 * ratio), Qt::white);
        for (int x = 0; x < lines.width(); x += 2) {
            for (int y = 0; y < lines.height(); ++y) {
                lines.setPixelColor(x, y, Qt::black);
            }
        }
        const QImage screen = shown(lines, ratio);
        int wrong = 0;
        for (int y = 0; y < lines.height(); ++y) {
            for (int x = 0; x < lines.width(); ++x) {
                wrong += screen.pixelColor(x, y) != lines.pixelColor(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(wrong, 0) << "at scale " << ratio;
    }
}

TEST(ImageView, aNullImageEmptiesTheView) {
    ImageView view;
    view.resize(200, 100);
    view.setImage(filled(10, 10, Qt::black), QStringLiteral("A picture"));
    view.setImage(QImage(), QStringLiteral("No picture"));
    EXPECT_TRUE(view.image().isNull());
    QImage screen = filled(200, 100, Qt::white);
    view.render(&screen, QPoint(), QRegion(), QWidget::RenderFlags());
    EXPECT_TRUE(painted(screen).isEmpty());
}

TEST(ImageView, assistiveProgramsSeeAGraphicWithTheDescriptionAsItsName) {
    ImageView view;
    view.setImage(filled(10, 10, Qt::black), QStringLiteral("A picture"));
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Graphic);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("A picture"));
    view.setImage(QImage(), QStringLiteral("A picture"));
    EXPECT_EQ(accessible->text(QAccessible::Name), QString());
}

TEST(ImageView, anotherImageOfTheSameSizeReplacesTheFirst) {
    ImageView view;
    view.resize(200, 100);
    QImage screen = filled(200, 100, Qt::white);
    view.setImage(filled(200, 100, Qt::black), QString());
    view.render(&screen);
    view.setImage(filled(200, 100, Qt::red), QString());
    view.render(&screen);
    EXPECT_EQ(screen.pixelColor(100, 50), QColor(Qt::red));
}

}  // namespace

}  // namespace ambulet
