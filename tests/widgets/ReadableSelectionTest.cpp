#include "widgets/ReadableSelection.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

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
        const QColor shown = widget.palette().color(QPalette::Highlight);
        EXPECT_GE(contrastRatio(shown, ink), 4.5);
        if (contrastRatio(ground, ink) >= 4.5) {
            EXPECT_EQ(shown, ground);
        } else {
            EXPECT_LT(contrastRatio(shown, ink), 4.8);  // changed as little as necessary
        }
    }
    QApplication::setPalette(before);
}

}  // namespace

}  // namespace ambulet
