#include "widgets/InPlaceField.h"

#include <QAction>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

class InPlaceFieldTest : public testing::Test {
  protected:
    InPlaceFieldTest() {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(other);
        window.show();
        window.activateWindow();
        field->setFocus();
        QCoreApplication::processEvents();
    }

    // How many times each signal was sent: newline, cancel, end.
    std::array<qsizetype, 3> counts() const {
        return {newlines.size(), cancels.size(), ends.size()};
    }

    using Counts = std::array<qsizetype, 3>;

    QWidget window;
    InPlaceField* field = new InPlaceField;
    QLineEdit* other = new QLineEdit;
    QSignalSpy newlines{field, &InPlaceField::insertNewline};
    QSignalSpy cancels{field, &InPlaceField::cancelOperation};
    QSignalSpy ends{field, &InPlaceField::didEndEditing};
};

TEST_F(InPlaceFieldTest, returnAndEnterEachSendOneNewline) {
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClick(field, Qt::Key_Enter);
    EXPECT_EQ(counts(), (Counts{2, 0, 0}));
}

TEST_F(InPlaceFieldTest, escapeCancels) {
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(counts(), (Counts{0, 1, 0}));
}

TEST_F(InPlaceFieldTest, escapeGoesToTheFieldEvenIfItIsAShortcut) {
    QAction action;
    action.setShortcut(Qt::Key_Escape);
    window.addAction(&action);
    QSignalSpy triggered(&action, &QAction::triggered);
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(triggered.size(), 0);
    EXPECT_EQ(counts(), (Counts{0, 1, 0}));
}

TEST_F(InPlaceFieldTest, editingEndsWhenAnotherControlTakesTheFocus) {
    other->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(counts(), (Counts{0, 0, 1}));
    field->setFocus();
    other->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(counts(), (Counts{0, 0, 2}));
}

TEST_F(InPlaceFieldTest, editingDoesNotEndIfTheFocusWillComeBack) {
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        QFocusEvent event(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(field, &event);
    }
    EXPECT_EQ(counts(), (Counts{0, 0, 0}));
}

TEST_F(InPlaceFieldTest, hidingTheFieldSendsNoSignal) {
    field->hide();
    QCoreApplication::processEvents();
    EXPECT_FALSE(field->hasFocus());
    EXPECT_EQ(counts(), (Counts{0, 0, 0}));
}

}  // namespace

}  // namespace ambulet
