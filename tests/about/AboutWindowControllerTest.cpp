#include "about/AboutWindowController.h"

#include "about/LinkButton.h"
#include "platform/Bundle.h"
#include "support/AuxiliaryWindowCase.h"
#include "support/ChangingBundle.h"
#include "support/ScopedFontSize.h"
#include "widgets/Contrast.h"
#include "widgets/ImageView.h"
#include "widgets/Label.h"

#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QKeyEvent>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// Receives the addresses that would go to the user's browser.
class Browser : public QObject {
    Q_OBJECT

  public:
    Browser() { QDesktopServices::setUrlHandler(u"https"_s, this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    QList<QUrl> opened;

  public Q_SLOTS:
    void open(const QUrl& url) { opened.append(url); }
};

class AboutWindowControllerTest : public AuxiliaryWindowCase<AboutWindowController> {
  protected:
    Browser browser;
};

TEST_F(AboutWindowControllerTest, theTextsNameTheApplicationItsVersionAndItsMakers) {
    EXPECT_EQ(controller.window()->windowTitle(), u"About Daily Steps"_s);
    EXPECT_EQ(text("name"), u"Daily Steps"_s);
    EXPECT_EQ(text("version"), u"Version "_s + QStringLiteral(PROJECT_VERSION));
    EXPECT_EQ(text("credit"), u"Made by the Ambulet developers"_s);
    EXPECT_EQ(view<LinkButton>("link").text(), QUrl(QStringLiteral(AMBULET_WEBSITE)).host());
    EXPECT_EQ(text("copyright"), u"Copyright © 2026 the Ambulet developers"_s);
}

TEST_F(AboutWindowControllerTest,
       theNameIsTheProcessNameAndTheVersionIsEmptyWithoutBundleInformation) {
    const Bundle nameless(folder.filePath(u"none.plist"_s), folder.path());
    AboutWindowController other(nameless);
    EXPECT_EQ(other.window()->windowTitle(), u"About test_about"_s);
    EXPECT_EQ(other.window()->findChild<Label*>(u"name"_s)->text(), u"test_about"_s);
    EXPECT_EQ(other.window()->findChild<Label*>(u"version"_s)->text(), u"Version "_s);
}

TEST_F(AboutWindowControllerTest, theTextsDoNotFollowChangesOfTheBundle) {
    const ChangingBundle changing(u"First"_s, u"1.5"_s);
    AboutWindowController other(changing.bundle);
    other.showWindow();
    changing.change(u"Second"_s, u"2.5"_s);
    other.showWindow();
    EXPECT_EQ(other.window()->windowTitle(), u"About First"_s);
    EXPECT_EQ(other.window()->findChild<Label*>(u"name"_s)->text(), u"First"_s);
    EXPECT_EQ(other.window()->findChild<Label*>(u"version"_s)->text(), u"Version 1.5"_s);
}

TEST_F(AboutWindowControllerTest, allViewsHaveTheRightFrames) {
    show();
    EXPECT_EQ(controller.window()->size(), QSize(360, 260));
    EXPECT_EQ(frame("icon"), QRect(148, 180, 64, 64));
    EXPECT_EQ(frame("name"), QRect(20, 146, 320, 22));
    EXPECT_EQ(frame("version"), QRect(20, 124, 320, 16));
    EXPECT_EQ(frame("credit"), QRect(20, 80, 320, 16));
    EXPECT_EQ(frame("link"), QRect(0, 50, 360, 16));
    EXPECT_EQ(frame("copyright"), QRect(20, 16, 320, 14));
}

TEST_F(AboutWindowControllerTest, aCenteredLabelHasMarginsOfTwentyPoints) {
    const auto made = AboutWindowController::centeredLabel(u"text"_s, systemFont(11),
                                                           LabelColor::Label, 70, 18, 500);
    EXPECT_EQ(made.frame, QRect(20, 70, 460, 18));
    EXPECT_EQ(made.label->text(), u"text"_s);
    EXPECT_EQ(made.label->alignment(), Qt::AlignCenter);
    EXPECT_EQ(made.label->parent(), nullptr);
}

TEST_F(AboutWindowControllerTest, theTextsHaveTheRightSizesAndFitTheirRows) {
    struct {
        const char* name;
        int size;
        bool bold;
    } const cases[] = {{"name", 16, true},
                       {"version", 11, false},
                       {"credit", 11, false},
                       {"link", 11, false},
                       {"copyright", 10, false}};
    for (const auto& expected : cases) {
        const QWidget& row = view<QWidget>(expected.name);
        EXPECT_EQ(row.font().pixelSize(), expected.size) << expected.name;
        EXPECT_EQ(row.font().bold(), expected.bold) << expected.name;
        EXPECT_LE(row.sizeHint().width(), row.width()) << expected.name;
        EXPECT_LE(row.sizeHint().height(), row.height()) << expected.name;
    }
    EXPECT_TRUE(view<LinkButton>("link").font().underline());
}

TEST_F(AboutWindowControllerTest, theTextsHaveTheRightColors) {
    expectColor("name", LabelColor::Label);
    expectColor("version", LabelColor::SecondaryLabel);
    expectColor("credit", LabelColor::Label);
    expectColor("copyright", LabelColor::TertiaryLabel);
}

TEST_F(AboutWindowControllerTest, theLinkIsDrawnInTheLinkColor) {
    show();
    auto& link = view<LinkButton>("link");
    link.clearFocus();
    const QImage drawn = link.grab().toImage();
    const auto has = [&drawn](const QColor& color) {
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x) {
                if (drawn.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    };
    // The underline has pixels of the full colour, whatever the font.
    EXPECT_TRUE(has(labelColor(LabelColor::Link, QApplication::palette())));
    EXPECT_FALSE(has(labelColor(LabelColor::Label, QApplication::palette())));
}

TEST_F(AboutWindowControllerTest, theWindowCannotBeResizedMaximisedOrMinimised) {
    show();
    controller.window()->resize(500, 500);
    EXPECT_EQ(controller.window()->size(), QSize(360, 260));
    EXPECT_FALSE(controller.window()->windowFlags() & Qt::WindowMinMaxButtonsHint);
    EXPECT_TRUE(controller.window()->windowFlags() & Qt::WindowCloseButtonHint);
}

TEST_F(AboutWindowControllerTest, showingTwiceShowsTheSameWindowCentredEachTime) {
    show();
    expectCentered();
    const QWidget* const window = controller.window();
    const QWidgetList views = window->findChildren<QWidget*>();
    EXPECT_EQ(views.size(), 6);
    controller.window()->move(1, 2);
    show();
    expectCentered();
    EXPECT_EQ(controller.window(), window);
    EXPECT_EQ(window->findChildren<QWidget*>(), views);
}

TEST_F(AboutWindowControllerTest, aClosedWindowReopensCentred) {
    show();
    const QWidget* const window = controller.window();
    controller.window()->move(1, 2);
    controller.window()->close();
    EXPECT_FALSE(window->isVisible());
    show();
    EXPECT_EQ(controller.window(), window);
    expectCentered();
}

TEST_F(AboutWindowControllerTest, aClickAnywhereInTheLinksRowOpensTheWebsiteAndKeepsTheWindowOpen) {
    show();
    auto& link = view<LinkButton>("link");
    const QList<QPoint> points = {link.rect().center(), {0, 0}, {359, 15}};
    for (const QPoint& point : points) {
        QTest::mouseClick(&link, Qt::LeftButton, Qt::NoModifier, point);
    }
    EXPECT_EQ(browser.opened, QList<QUrl>(3, QUrl(QStringLiteral(AMBULET_WEBSITE))));
    EXPECT_TRUE(controller.window()->isVisible());
}

TEST_F(AboutWindowControllerTest, aClickBesideTheLinksRowOpensNothing) {
    show();
    QTest::mouseClick(&view<Label>("credit"), Qt::LeftButton);
    QTest::mouseClick(controller.window(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 260 - 48));
    EXPECT_TRUE(browser.opened.isEmpty());
}

TEST_F(AboutWindowControllerTest, theLinkIsReachedByTabAndOpenedBySpaceReturnAndEnter) {
    show();
    QTest::keyClick(controller.window(), Qt::Key_Tab);
    auto& link = view<LinkButton>("link");
    ASSERT_TRUE(link.hasFocus());
    QTest::keyClick(&link, Qt::Key_Space);
    EXPECT_EQ(browser.opened.size(), 1);
    QTest::keyClick(&link, Qt::Key_Return);
    EXPECT_EQ(browser.opened.size(), 2);
    QTest::keyClick(&link, Qt::Key_Enter);
    EXPECT_EQ(browser.opened.size(), 3);
    QTest::keyClick(&link, Qt::Key_A);
    EXPECT_EQ(browser.opened.size(), 3);
}

TEST_F(AboutWindowControllerTest, aHeldReturnOrEnterOpensTheWebsiteOnce) {
    show();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        for (const bool repeated : {false, true, true}) {
            QKeyEvent press(QEvent::KeyPress, key, {}, {}, repeated);
            QApplication::sendEvent(&view<LinkButton>("link"), &press);
        }
    }
    EXPECT_EQ(browser.opened.size(), 2);
}

TEST_F(AboutWindowControllerTest, theLinkHasAHandCursor) {
    EXPECT_EQ(view<LinkButton>("link").cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(AboutWindowControllerTest, theFocusedLinkHasAContrastingOutline) {
    show();
    auto& link = view<LinkButton>("link");
    link.clearFocus();
    const QImage without = link.grab().toImage();
    QTest::keyClick(controller.window(), Qt::Key_Tab);
    ASSERT_TRUE(link.hasFocus());
    const QImage with = link.grab().toImage();
    int marked = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) != without.pixel(x, y)) {
                EXPECT_GE(contrastRatio(with.pixelColor(x, y), without.pixelColor(x, y)),
                          markContrast);
                ++marked;
            }
        }
    }
    EXPECT_GE(marked, 2 * (link.sizeHint().width() + link.sizeHint().height()));
}

TEST_F(AboutWindowControllerTest, theIconIsTheApplicationIcon) {
    QPixmap red(64, 64);
    red.fill(Qt::red);
    QApplication::setWindowIcon(QIcon(red));
    AboutWindowController other(Bundle::main());
    EXPECT_EQ(other.window()->findChild<ImageView*>(u"icon"_s)->image().pixelColor(32, 32),
              QColor(Qt::red));
    EXPECT_EQ(other.window()->findChild<ImageView*>(u"icon"_s)->accessibleName(),
              u"Daily Steps icon"_s);
    QApplication::setWindowIcon(QIcon());
}

TEST_F(AboutWindowControllerTest, textsGrowWithTheUsersFontAndStillFitTheirRows) {
    const ScopedFontSize large(26);
    AboutWindowController other(Bundle::main());
    other.showWindow();
    EXPECT_EQ(other.window()->size(), QSize(720, 520));
    const std::pair<const char*, int> cases[] = {
        {"name", 32}, {"version", 22}, {"credit", 22}, {"link", 22}, {"copyright", 20}};
    for (const auto& [name, pixels] : cases) {
        const QWidget& row = *other.window()->findChild<QWidget*>(QString::fromLatin1(name));
        EXPECT_EQ(row.font().pixelSize(), pixels) << name;
        EXPECT_LE(row.sizeHint().height(), row.height()) << name;
        EXPECT_LE(row.sizeHint().width(), row.width()) << name;
    }
    EXPECT_TRUE(other.window()->findChild<LinkButton*>(u"link"_s)->font().underline());
}

TEST_F(AboutWindowControllerTest, theIconViewIsEmptyIfTheApplicationHasNoIcon) {
    EXPECT_TRUE(view<ImageView>("icon").image().isNull());
}

TEST(AboutWindowController, concurrentFirstCallsReturnTheSameSharedController) {
    expectOneSharedController<AboutWindowController>();
}

}  // namespace

}  // namespace ambulet

#include "AboutWindowControllerTest.moc"
