#include "widgets/LineLabel.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

const QString line = QStringLiteral("Average: 12,345 steps/day, 5.85 miles/day");

class LineLabelTest : public testing::Test {
  protected:
    LineLabelTest() {
        label.setText(line);
        label.resize(label.sizeHint());
        label.show();
    }
    ~LineLabelTest() override { QToolTip::hideText(); }

    QString tooltip() {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&label, &event);
        return QToolTip::text();
    }

    LineLabel label;
};

TEST_F(LineLabelTest, aTextThatDoesNotFitEndsWithAnEllipsis) {
    const QString shortened = QStringLiteral("Average: 12,345 s…");
    label.resize(label.fontMetrics().horizontalAdvance(shortened) + 1, label.height());
    const QImage shown = label.grab().toImage();
    label.setText(shortened);
    EXPECT_EQ(shown, label.grab().toImage());
}

TEST_F(LineLabelTest, aTextThatFitsLooksLikeThatOfAPlainLabel) {
    QLabel plain(line);
    plain.resize(label.size());
    EXPECT_EQ(label.grab().toImage(), plain.grab().toImage());
}

TEST_F(LineLabelTest, theTooltipOfATextThatDoesNotFitHasTheWholeText) {
    EXPECT_EQ(tooltip(), QString());
    label.resize(label.width() / 2, label.height());
    EXPECT_EQ(tooltip(), line);
    label.resize(label.sizeHint());
    EXPECT_EQ(tooltip(), QString());
}

TEST_F(LineLabelTest, aTooltipOfTheLabelItselfFollowsTheWholeText) {
    label.setToolTip(QStringLiteral("Click to edit"));
    EXPECT_EQ(tooltip(), QStringLiteral("Click to edit"));
    label.resize(label.width() / 2, label.height());
    EXPECT_EQ(tooltip(), line + QStringLiteral("\nClick to edit"));
}

TEST_F(LineLabelTest, assistiveProgramsSeeTheWholeText) {
    label.resize(label.width() / 2, label.height());
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
    EXPECT_EQ(accessible->text(QAccessible::Name), line);
}

}  // namespace

}  // namespace ambulet
