#include "widgets/Contrast.h"

#include <QPalette>
#include <gtest/gtest.h>

#include <algorithm>

namespace ambulet {

namespace {

TEST(Contrast, theRatioIsThatOfTheGuidelines) {
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::white, Qt::black), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::red, Qt::red), 1);
    // The luminance of the grey 119/255 is 0.184475; 1.05 / 0.234475 = 4.478.
    EXPECT_NEAR(contrastRatio(QColor(119, 119, 119), Qt::white), 4.478, 0.001);
}

TEST(Contrast, aMixedColourIsBetweenTheTwoColours) {
    EXPECT_EQ(mixed(QColor(10, 20, 30), QColor(110, 220, 130), 0.5), QColor(60, 120, 80));
    EXPECT_EQ(mixed(Qt::black, Qt::white, 0), QColor(Qt::black));
    EXPECT_EQ(mixed(Qt::black, Qt::white, 1), QColor(Qt::white));
}

TEST(Contrast, aColourWithEnoughContrastIsKept) {
    EXPECT_EQ(withContrast(QColor(0, 0, 128), Qt::black, Qt::white, 4.5), QColor(0, 0, 128));
}

TEST(Contrast, aColourWithTooLittleContrastIsChangedAsLittleAsNecessary) {
    const QColor pale(48, 140, 198);
    const QColor darker = withContrast(pale, Qt::black, Qt::white, 4.5);
    EXPECT_GE(contrastRatio(darker, Qt::white), 4.5);
    EXPECT_LT(contrastRatio(darker, Qt::white), 4.7);
    EXPECT_EQ(darker.hslHue() / 5, pale.hslHue() / 5);
}

TEST(Contrast, theOtherColourIsUsedIfNoMixtureHasEnoughContrast) {
    EXPECT_EQ(withContrast(Qt::gray, QColor(130, 130, 130), QColor(120, 120, 120), 4.5),
              QColor(130, 130, 130));
}

TEST(Contrast, aSeparatorHasAContrastOfThreeToOneInLightAndDarkPalettes) {
    for (const auto& [ground, text] : {std::pair(QColor(239, 239, 239), QColor(Qt::black)),
                                       {QColor(49, 54, 59), QColor(239, 240, 241)}}) {
        QPalette palette;
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Text, text);
        for (const QColor& base : {ground, ground.lighter(140), ground.darker(140)}) {
            palette.setColor(QPalette::Base, base);
            double least = 21;
            for (const QColor& behind : {ground, base, groupRowColor(palette)}) {
                least = std::min(least, contrastRatio(separatorColor(palette), behind));
            }
            EXPECT_GE(least, 3);
            EXPECT_LT(least, 3.3);
        }
    }
}

}  // namespace

}  // namespace ambulet
