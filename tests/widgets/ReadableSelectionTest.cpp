#include "widgets/ReadableSelection.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

TEST(ReadableSelection, contrastIsTheGuidelinesRatio) {
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::white, Qt::black), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::red, Qt::red), 1);
    // The linear value of 119/255 is 0.184475; 1.05 / 0.234475 = 4.478.
    EXPECT_NEAR(contrastRatio(QColor(119, 119, 119), Qt::white), 4.478, 0.001);
}

TEST(ReadableSelection, aReadableGroundIsKept) {
    EXPECT_EQ(readableGround(QColor(0, 0, 128), Qt::white, 4.5), QColor(0, 0, 128));
}

TEST(ReadableSelection, aGroundIsMovedAwayFromItsInkJustFarEnough) {
    const QColor pale(48, 140, 198);
    const QColor darker = readableGround(pale, Qt::white, 4.5);
    EXPECT_GE(contrastRatio(darker, Qt::white), 4.5);
    EXPECT_LT(contrastRatio(darker, Qt::white), 4.8);
    EXPECT_EQ(darker.hslHue() / 5, pale.hslHue() / 5);
    const QColor lighter = readableGround(QColor(90, 90, 90), Qt::black, 4.5);
    EXPECT_GE(contrastRatio(lighter, Qt::black), 4.5);
    EXPECT_LT(contrastRatio(lighter, Qt::black), 4.8);
}

TEST(ReadableSelection, followsTheApplicationsPalette) {
    const QPalette before = QApplication::palette();
    QWidget window;
    QWidget widget(&window);
    keepSelectionReadable(&widget);
    for (const auto& [ground, ink] : {std::pair(QColor(48, 140, 198), QColor(Qt::white)),
                                      {QColor(60, 60, 60), QColor(Qt::black)},
                                      {QColor(0, 0, 90), QColor(Qt::white)}}) {
        QPalette palette = before;
        palette.setColor(QPalette::Highlight, ground);
        palette.setColor(QPalette::HighlightedText, ink);
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
        EXPECT_EQ(widget.palette().color(QPalette::HighlightedText), ink);
        EXPECT_EQ(widget.palette().color(QPalette::Highlight), readableGround(ground, ink, 4.5));
    }
    QApplication::setPalette(before);
}

}  // namespace

}  // namespace ambulet
