#include "widgets/Label.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <cmath>

namespace ambulet {

namespace {

QPalette paletteOf(const QColor& text, const QColor& ground, const QColor& link) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::Link, link);
    return palette;
}

// The contrast ratio of two greys. Luminance is a weighted mean of three values, one for each
// channel. For a grey the three values are equal, so each of them is the luminance.
double contrastOfGreys(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& grey) {
        EXPECT_EQ(grey.red(), grey.green());
        EXPECT_EQ(grey.red(), grey.blue());
        const double channel = grey.red() / 255.0;
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(LabelColor, secondaryAndTertiaryTextIsFainterButLegibleInLightAndDarkPalettes) {
    const QPalette palettes[] = {paletteOf(Qt::black, QColor(239, 239, 239), Qt::blue),
                                 paletteOf(QColor(252, 252, 252), QColor(42, 42, 42), Qt::blue)};
    for (const QPalette& palette : palettes) {
        const QColor text = palette.color(QPalette::WindowText);
        const QColor ground = palette.color(QPalette::Window);
        EXPECT_EQ(labelColor(LabelColor::Label, palette), text);
        const double secondary =
            contrastOfGreys(labelColor(LabelColor::SecondaryLabel, palette), ground);
        const double tertiary =
            contrastOfGreys(labelColor(LabelColor::TertiaryLabel, palette), ground);
        EXPECT_LT(secondary, contrastOfGreys(text, ground));
        EXPECT_LT(tertiary, secondary);
        EXPECT_GE(tertiary, 4.5);
    }
}

TEST(LabelColor, aFaintTextColourIsAlsoUsedForSecondaryAndTertiaryText) {
    const QPalette palette = paletteOf(QColor(130, 130, 130), QColor(200, 200, 200), Qt::blue);
    EXPECT_EQ(labelColor(LabelColor::SecondaryLabel, palette), QColor(130, 130, 130));
    EXPECT_EQ(labelColor(LabelColor::TertiaryLabel, palette), QColor(130, 130, 130));
}

TEST(LabelColor, aLegibleLinkColourIsNotChanged) {
    const QColor link(0, 0, 200);
    EXPECT_EQ(labelColor(LabelColor::Link, paletteOf(Qt::black, Qt::white, link)), link);
}

TEST(LabelColor, anIllegibleLinkColourIsMixedWithTheTextColour) {
    const QPalette palette = paletteOf(Qt::white, Qt::black, QColor(60, 60, 60));
    const QColor link = labelColor(LabelColor::Link, palette);
    EXPECT_GE(contrastOfGreys(link, Qt::black), 4.5);
    EXPECT_LT(contrastOfGreys(link, Qt::black), 5.0);
}

TEST(Label, theColourFollowsTheApplicationsPalette) {
    const QPalette before = QApplication::palette();
    QWidget window;
    auto* const label =
        new Label(QStringLiteral("text"), systemFont(11), LabelColor::SecondaryLabel);
    label->setParent(&window);
    const auto shown = [label] { return label->palette().color(QPalette::WindowText); };
    EXPECT_EQ(shown(), labelColor(LabelColor::SecondaryLabel, before));
    const QPalette dark = paletteOf(Qt::white, QColor(20, 20, 20), Qt::blue);
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown(), labelColor(LabelColor::SecondaryLabel, dark));
    QApplication::setPalette(before);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown(), labelColor(LabelColor::SecondaryLabel, before));
}

TEST(Label, theTextIsShownAsPlainText) {
    const Label label(QStringLiteral("<b>1 & 2</b>"), systemFont(11), LabelColor::Label);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST(SystemFont, hasTheFamilyOfTheApplicationAndTheGivenSizeAndWeight) {
    QLabel label;
    label.setFont(systemFont(13));
    EXPECT_EQ(label.font().pixelSize(), 13);
    EXPECT_EQ(label.font().family(), QApplication::font().family());
    EXPECT_FALSE(label.font().bold());
    label.setFont(systemFont(16, QFont::Bold));
    EXPECT_TRUE(label.font().bold());
}

}  // namespace

}  // namespace ambulet
