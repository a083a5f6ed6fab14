#include "widgets/AutoresizingLayout.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

using Horizontally = AutoresizingLayout::Horizontally;
using Vertically = AutoresizingLayout::Vertically;

class AutoresizingLayoutTest : public testing::Test {
  protected:
    // Adds a view of 30 x 40 with its lower left corner at (10, 20) in a content of 100 x 200.
    QWidget* addView(Horizontally horizontally, Vertically vertically) {
        auto view = std::make_unique<QWidget>();
        QWidget* const added = view.get();
        layout->add(std::move(view), QRect(10, 20, 30, 40), horizontally, vertically);
        return added;
    }

    void resize(int width, int height) {
        window.resize(width, height);
        layout->setGeometry(window.rect());
    }

    QWidget window;
    AutoresizingLayout* layout = new AutoresizingLayout(QSize(100, 200), &window);
};

TEST_F(AutoresizingLayoutTest, frameOriginsAreAtTheLowerLeft) {
    const QWidget* const view = addView(Horizontally::RightMargin, Vertically::TopMargin);
    resize(100, 200);
    EXPECT_EQ(view->geometry(), QRect(10, 200 - 20 - 40, 30, 40));
}

TEST_F(AutoresizingLayoutTest, theStretchingMarginOrSizeTakesTheDifference) {
    struct {
        Horizontally horizontally;
        Vertically vertically;
        QRect larger;   // in a content of 150 x 270
        QRect smaller;  // in a content of 80 x 170
    } const cases[] = {
        {Horizontally::RightMargin, Vertically::TopMargin, {10, 210, 30, 40}, {10, 110, 30, 40}},
        {Horizontally::Width, Vertically::Height, {10, 140, 80, 110}, {10, 140, 10, 10}},
        {Horizontally::LeftMargin, Vertically::BottomMargin, {60, 140, 30, 40}, {-10, 140, 30, 40}},
    };
    for (const auto& expected : cases) {
        const QWidget* const view = addView(expected.horizontally, expected.vertically);
        resize(150, 270);
        EXPECT_EQ(view->geometry(), expected.larger);
        resize(80, 170);
        EXPECT_EQ(view->geometry(), expected.smaller);
    }
}

TEST_F(AutoresizingLayoutTest, aViewThatWasShrunkToNothingRegainsItsFrame) {
    const QWidget* const view = addView(Horizontally::Width, Vertically::Height);
    resize(20, 100);
    EXPECT_EQ(view->size(), QSize(0, 0));
    resize(100, 200);
    EXPECT_EQ(view->geometry(), QRect(10, 140, 30, 40));
}

TEST_F(AutoresizingLayoutTest, aHiddenViewIsPlacedToo) {
    QWidget* const view = addView(Horizontally::LeftMargin, Vertically::TopMargin);
    view->hide();
    resize(150, 270);
    view->show();
    EXPECT_EQ(view->geometry(), QRect(60, 210, 30, 40));
}

TEST_F(AutoresizingLayoutTest, theSizeHintIsTheInitialSizeAndTheMinimumIsZero) {
    addView(Horizontally::Width, Vertically::Height);
    EXPECT_EQ(layout->sizeHint(), QSize(100, 200));
    EXPECT_EQ(layout->totalMinimumSize(), QSize(0, 0));
}

TEST_F(AutoresizingLayoutTest, theScaleMultipliesFramesAndPixelSizesOfFonts) {
    QFont pixels;
    pixels.setPixelSize(11);
    QFont points;
    points.setPointSize(10);
    const auto add = [this](const QFont& font) {
        auto view = std::make_unique<QWidget>();
        view->setFont(font);
        QWidget* const added = view.get();
        layout->add(std::move(view), QRect(10, 20, 30, 40), Horizontally::Width,
                    Vertically::TopMargin);
        return added;
    };
    const QWidget* const before = add(pixels);
    layout->setScale(1.5);
    const QWidget* const after = add(pixels);
    const QWidget* const inPoints = add(points);
    EXPECT_EQ(layout->sizeHint(), QSize(150, 300));
    resize(170, 300);
    for (const QWidget* const view : {before, after}) {
        EXPECT_EQ(view->geometry(), QRect(15, 300 - 30 - 60, 45 + 20, 60));
        EXPECT_EQ(view->font().pixelSize(), 17);  // 1.5 * 11 = 16.5, rounded
    }
    EXPECT_EQ(inPoints->font().pointSize(), 10);
    layout->setScale(1);
    resize(100, 200);
    EXPECT_EQ(before->geometry(), QRect(10, 140, 30, 40));
    EXPECT_EQ(before->font().pixelSize(), 11);
}

TEST_F(AutoresizingLayoutTest, aDestroyedViewLeavesTheLayout) {
    const QWidget* const view = addView(Horizontally::Width, Vertically::Height);
    EXPECT_EQ(layout->count(), 1);
    delete view;
    EXPECT_EQ(layout->count(), 0);
    resize(150, 270);
}

}  // namespace

}  // namespace ambulet
