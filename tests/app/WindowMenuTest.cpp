#include "app/WindowMenu.h"

#include "app/ShownText.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

class WindowMenuTest : public testing::Test {
  protected:
    static void show(QWidget& window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QAction& item(const QString& text) { return itemShowing(text, menu); }

    // The texts of the items below the four fixed ones. "* " precedes the text of a checked item.
    // A separator is "-".
    QStringList list() {
        Q_EMIT menu.aboutToShow();
        QStringList found;
        for (const QAction* const action : menu.actions().mid(4)) {
            found.append(action->isSeparator()
                             ? u"-"_s
                             : (action->isChecked() ? u"* "_s : u""_s) + shownText(*action));
        }
        return found;
    }

    WindowMenu menu{u"Window"_s, nullptr};
};

TEST_F(WindowMenuTest, theOpenWindowsAreListedBelowASeparatorAndTheFrontOneIsChecked) {
    EXPECT_EQ(list(), QStringList());
    QWidget first;
    first.setWindowTitle(u"Alpha & Omega"_s);
    QWidget second;
    second.setWindowTitle(u"Beta"_s);
    show(second);
    show(first);
    EXPECT_EQ(list(), QStringList({u"-"_s, u"* Alpha & Omega"_s, u"Beta"_s}));
    show(second);
    EXPECT_EQ(list(), QStringList({u"-"_s, u"Alpha & Omega"_s, u"* Beta"_s}));
    first.close();
    EXPECT_EQ(list(), QStringList({u"-"_s, u"* Beta"_s}));
}

TEST_F(WindowMenuTest, aListedWindowHasAnAccessKeyIfALetterOfItsTitleIsFree) {
    QWidget first;
    first.setWindowTitle(u"Zebra"_s);
    QWidget second;
    second.setWindowTitle(u"Zzz"_s);
    show(first);
    show(second);
    Q_EMIT menu.aboutToShow();
    QStringList texts;
    for (const QAction* const action : menu.actions().mid(5)) {
        texts.append(action->text());
    }
    // Zoom has Z, so Zebra gets its second letter. Zzz has no other letter.
    EXPECT_EQ(texts, QStringList({u"Z&ebra"_s, u"Zzz"_s}));
}

TEST_F(WindowMenuTest, aMinimisedWindowIsListedAndChoosingItsItemRestoresIt) {
    QWidget first;
    first.setWindowTitle(u"Alpha"_s);
    QWidget second;
    second.setWindowTitle(u"Beta"_s);
    show(first);
    show(second);
    first.showMinimized();
    EXPECT_EQ(list().mid(1).size(), 2);
    item(u"Alpha"_s).trigger();
    EXPECT_FALSE(first.isMinimized());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&first));
}

TEST_F(WindowMenuTest, aDialogIsNotListed) {
    QWidget window;
    window.setWindowTitle(u"Alpha"_s);
    show(window);
    QDialog dialog(&window);
    dialog.setWindowTitle(u"Dialog"_s);
    dialog.show();
    EXPECT_EQ(list().size(), 2);
}

TEST_F(WindowMenuTest, theItemOfADestroyedWindowDoesNothing) {
    QWidget hidden;
    show(hidden);
    hidden.showMinimized();
    QWidget front;
    show(front);
    auto window = std::make_unique<QWidget>();
    window->setWindowTitle(u"Alpha"_s);
    show(*window);
    list();
    show(front);
    window.reset();
    item(u"Alpha"_s).trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(hidden.isMinimized());
    EXPECT_EQ(QApplication::activeWindow(), &front);
    EXPECT_FALSE(list().contains(u"Alpha"_s));
}

TEST_F(WindowMenuTest, minimizeAndZoomActOnTheFrontWindowOnly) {
    QWidget behind;
    show(behind);
    QWidget window;
    show(window);
    item(u"Zoom"_s).trigger();
    EXPECT_TRUE(window.isMaximized());
    item(u"Zoom"_s).trigger();
    EXPECT_FALSE(window.isMaximized());
    item(u"Minimize"_s).trigger();
    EXPECT_TRUE(window.isMinimized());
    EXPECT_FALSE(behind.isMinimized());
    EXPECT_FALSE(behind.isMaximized());
}

TEST_F(WindowMenuTest, minimizeAndZoomAreDisabledIfTheFrontWindowLacksTheirButton) {
    EXPECT_FALSE(item(u"Minimize"_s).isEnabled()) << "there is no window at all";
    EXPECT_FALSE(item(u"Zoom"_s).isEnabled());
    QWidget both;
    show(both);
    EXPECT_TRUE(item(u"Minimize"_s).isEnabled());
    EXPECT_TRUE(item(u"Zoom"_s).isEnabled());
    constexpr Qt::WindowFlags bare = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    QWidget none;
    none.setWindowFlags(bare);
    show(none);
    EXPECT_FALSE(item(u"Minimize"_s).isEnabled());
    EXPECT_FALSE(item(u"Zoom"_s).isEnabled());
    QWidget zoomOnly;
    zoomOnly.setWindowFlags(bare | Qt::WindowMaximizeButtonHint);
    show(zoomOnly);
    EXPECT_FALSE(item(u"Minimize"_s).isEnabled());
    EXPECT_TRUE(item(u"Zoom"_s).isEnabled());
    show(both);
    EXPECT_TRUE(item(u"Minimize"_s).isEnabled());
}

}  // namespace

}  // namespace ambulet
