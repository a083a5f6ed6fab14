#include "widgets/Button.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

// Another button has the focus at first.
class ButtonTest : public testing::Test {
  protected:
    ButtonTest() : button(QStringLiteral("Next"), &window) {
        other.resize(10, 10);
        button.setGeometry(20, 20, 90, 28);
        window.resize(200, 100);
        window.show();
        window.activateWindow();
        other.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QImage picture() { return button.grab().toImage(); }

    QWidget window;
    Button other{&window};
    Button button;
};

QPalette darkPalette() {
    QPalette palette(QColor(239, 240, 241), QColor(49, 54, 59));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    return palette;
}

TEST_F(ButtonTest, theFocusMarkContrastsWithTheSameButtonWithoutTheFocus) {
    for (const QPalette& palette : {QApplication::style()->standardPalette(), darkPalette()}) {
        window.setPalette(palette);
        for (const bool down : {false, true}) {
            button.setDown(down);
            other.setFocus();
            const QImage without = picture();
            QTest::keyClick(&other, Qt::Key_Tab);
            ASSERT_TRUE(button.hasFocus());
            const QImage with = picture();
            int marked = 0;
            for (int y = 0; y < with.height(); ++y) {
                for (int x = 0; x < with.width(); ++x) {
                    const QColor before = without.pixelColor(x, y);
                    if (with.pixelColor(x, y) != before) {
                        EXPECT_GE(contrastRatio(with.pixelColor(x, y), before), markContrast);
                        ++marked;
                    }
                }
            }
            EXPECT_GE(marked, 2 * (with.width() + with.height()) - 30);
        }
    }
}

TEST_F(ButtonTest, aFocusThatCameByTheMouseIsNotMarked) {
    window.setAttribute(Qt::WA_KeyboardFocusChange, false);
    const QImage without = picture();
    button.setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(button.hasFocus());
    EXPECT_EQ(picture(), without);
}

TEST_F(ButtonTest, aHeldReturnOrEnterPressesTheButtonOnce) {
    const QSignalSpy clicks(&button, &Button::clicked);
    button.setAutoDefault(true);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        for (const bool repeated : {false, true, true}) {
            QKeyEvent press(QEvent::KeyPress, key, {}, {}, repeated);
            QApplication::sendEvent(&button, &press);
        }
    }
    EXPECT_EQ(clicks.count(), 2);
}

}  // namespace

}  // namespace ambulet
