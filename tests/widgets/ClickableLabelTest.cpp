#include "widgets/ClickableLabel.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

class ClickableLabelTest : public testing::Test {
  protected:
    ClickableLabelTest() {
        label.setText(QStringLiteral("Miles: 3.00"));
        label.setToolTip(QStringLiteral("Click to edit"));
        label.resize(200, 20);
        label.show();
    }

    ClickableLabel label;
    QSignalSpy clicks{&label, &ClickableLabel::clicked};
};

TEST_F(ClickableLabelTest, onlyAClickWithThePrimaryButtonSendsASignal) {
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 1);
    QTest::mouseClick(&label, Qt::RightButton);
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(ClickableLabelTest, aPressThatIsReleasedOutsideIsNoClick) {
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(10, 50));
    QTest::mouseRelease(&label, Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 0);
}

TEST_F(ClickableLabelTest, spaceReturnAndEnterClickTheLabel) {
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_A}) {
        QTest::keyClick(&label, key);
    }
    EXPECT_EQ(clicks.size(), 3);
}

TEST_F(ClickableLabelTest, tabFocusesTheLabelButAClickDoesNot) {
    EXPECT_EQ(label.focusPolicy(), Qt::TabFocus);
    label.clearFocus();
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_FALSE(label.hasFocus());
}

TEST_F(ClickableLabelTest, theFocusIsVisible) {
    label.clearFocus();
    const QImage without = label.grab().toImage();
    label.setFocus(Qt::TabFocusReason);
    label.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return label.hasFocus(); }));
    EXPECT_NE(label.grab().toImage(), without);
}

TEST_F(ClickableLabelTest, assistiveProgramsSeeAButton) {
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&label);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Miles: 3.00"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Click to edit"));
    ASSERT_NE(accessible->actionInterface(), nullptr);
    EXPECT_TRUE(accessible->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(ClickableLabelTest, assistiveProgramsStillSeeAPlainLabelAsALabel) {
    QLabel plain;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&plain)->role(), QAccessible::StaticText);
}

}  // namespace

}  // namespace ambulet
