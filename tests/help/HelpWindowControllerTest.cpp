#include "help/HelpWindowController.h"

#include "help/HelpPages.h"
#include "platform/Bundle.h"
#include "support/AuxiliaryWindowCase.h"
#include "support/ScopedFontSize.h"
#include "widgets/ImageView.h"
#include "widgets/Label.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

class HelpWindowControllerTest : public AuxiliaryWindowCase<HelpWindowController> {
  protected:
    QString indicator() { return text("pageIndicator"); }
    QString caption() { return text("captionField"); }
    QPushButton& previous() { return view<QPushButton>("prevButton"); }
    QPushButton& next() { return view<QPushButton>("nextButton"); }
    const QImage& image() { return view<ImageView>("imageView").image(); }

    void expectFirstPage() {
        EXPECT_EQ(indicator(), u"1 of 5"_s);
        EXPECT_EQ(caption(), u"Export the data from your phone by launching the Apple app called "
                             u"Health. In the Summary tab, tap your name in the upper right."_s);
        EXPECT_FALSE(previous().isVisible());
        EXPECT_EQ(next().text(), u"Next →"_s);
    }

    static void click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
};

TEST_F(HelpWindowControllerTest, theTitleNamesTheApplication) {
    EXPECT_EQ(controller.window()->windowTitle(), u"Getting Started with Daily Steps"_s);
}

TEST_F(HelpWindowControllerTest, theTitleNamesTheProcessIfTheBundleHasNoDisplayName) {
    const Bundle nameless(folder.filePath(u"none.plist"_s), folder.path());
    HelpWindowController other(nameless);
    EXPECT_EQ(other.window()->windowTitle(), u"Getting Started with test_help"_s);
}

TEST_F(HelpWindowControllerTest, allViewsHaveTheRightFramesAtFourWindowSizes) {
    show();
    const QSize smallest =
        QSize(400, 400).shrunkBy(controller.window()->windowHandle()->frameMargins());
    ASSERT_LT(smallest.height(), 400) << "the test needs a window frame";
    const int width = smallest.width();
    struct {
        QSize wanted;
        QSize content;
        QRect next, indicator, caption, image;
    } const cases[] = {
        // The first size. 720 - 106 = 614, 720 - 248 = 472, 720 - 32 = 688, 740 - 156 = 584.
        {{720, 740},
         {720, 740},
         {614, 16, 90, 28},
         {134, 22, 472, 16},
         {16, 52, 688, 80},
         {16, 140, 688, 584}},
        // 320 narrower and 340 shorter than the first size.
        {{400, 400},
         {400, 400},
         {294, 16, 90, 28},
         {134, 22, 152, 16},
         {16, 52, 368, 80},
         {16, 140, 368, 244}},
        {{1, 1},
         smallest,
         {width - 106, 16, 90, 28},
         {134, 22, width - 248, 16},
         {16, 52, width - 32, 80},
         {16, 140, width - 32, smallest.height() - 156}},
        // 280 wider and 160 taller than the first size.
        {{1000, 900},
         {1000, 900},
         {894, 16, 90, 28},
         {134, 22, 752, 16},
         {16, 52, 968, 80},
         {16, 140, 968, 744}},
    };
    for (const auto& expected : cases) {
        controller.window()->resize(expected.wanted);
        QCoreApplication::processEvents();
        EXPECT_EQ(controller.window()->size(), expected.content);
        EXPECT_EQ(frame("prevButton"), QRect(16, 16, 110, 28));
        EXPECT_EQ(frame("nextButton"), expected.next);
        EXPECT_EQ(frame("pageIndicator"), expected.indicator);
        EXPECT_EQ(frame("captionField"), expected.caption);
        EXPECT_EQ(frame("imageView"), expected.image);
    }
}

TEST_F(HelpWindowControllerTest, theWindowWithItsFrameCannotBeMadeSmallerThan400By400) {
    show();
    const QMargins margins = controller.window()->windowHandle()->frameMargins();
    EXPECT_GT(margins.top(), 0) << "the test needs a window frame";
    controller.window()->resize(1, 1);
    EXPECT_EQ(controller.window()->frameGeometry().size(), QSize(400, 400));
}

TEST_F(HelpWindowControllerTest, theWindowCanBeClosedAndMaximisedButNotMinimised) {
    show();
    const Qt::WindowFlags flags = controller.window()->windowFlags();
    EXPECT_TRUE(flags & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(flags & Qt::WindowMaximizeButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMinimizeButtonHint);
}

TEST_F(HelpWindowControllerTest, theGuideOpensAtItsFirstPage) {
    show();
    expectFirstPage();
    EXPECT_EQ(controller.currentPage(), 0);
}

TEST_F(HelpWindowControllerTest, nextLeadsThroughAllPagesAndDoneClosesTheWindow) {
    show();
    const QString captions[] = {
        u"Scroll to the bottom of that screen and look for \"Export All Health Data\"."_s,
        u"Tap \"Export\"."_s,
        u"Choose a destination that will get the data to your Mac, then use the \"Choose…\" "
        u"button in this app to open it."_s,
        u"You can select multiple days by holding down the Shift key to see data over a range "
        u"of days, or the Command key to select discontiguous days."_s,
    };
    for (int page = 2; page <= 5; ++page) {
        click(next());
        EXPECT_EQ(indicator(), u"%1 of 5"_s.arg(page));
        EXPECT_EQ(caption(), captions[page - 2]);
        EXPECT_TRUE(previous().isVisible());
        EXPECT_EQ(previous().text(), u"← Previous"_s);
        EXPECT_EQ(next().text(), page == 5 ? u"Done"_s : u"Next →"_s);
    }
    EXPECT_TRUE(controller.window()->isVisible());
    click(next());
    EXPECT_FALSE(controller.window()->isVisible());
    EXPECT_EQ(controller.currentPage(), 4);
}

TEST_F(HelpWindowControllerTest, previousOnTheSecondPageShowsTheFirstWherePreviousIsHidden) {
    show();
    click(next());
    click(previous());
    expectFirstPage();
}

TEST_F(HelpWindowControllerTest, previousOnTheFirstPageDoesNothing) {
    show();
    controller.prevPage();
    expectFirstPage();
}

TEST_F(HelpWindowControllerTest, previousOnTheLastPageTurnsDoneIntoNext) {
    show();
    controller.updateForPage(4);
    click(previous());
    EXPECT_EQ(indicator(), u"4 of 5"_s);
    EXPECT_EQ(next().text(), u"Next →"_s);
}

TEST_F(HelpWindowControllerTest, theGuideReopensCentredAtTheFirstPageAfterDone) {
    show();
    const QWidget* const window = controller.window();
    controller.updateForPage(4);
    controller.window()->move(1, 2);
    click(next());
    show();
    EXPECT_EQ(controller.window(), window);
    expectFirstPage();
    expectCentered();
}

TEST_F(HelpWindowControllerTest, showingTheOpenGuideShowsTheFirstPageAndCentresTheWindow) {
    show();
    expectCentered();
    controller.updateForPage(2);
    controller.window()->move(1, 2);
    controller.showWindow();
    expectFirstPage();
    expectCentered();
}

TEST_F(HelpWindowControllerTest, everyPageHasAPictureForDenseScreens) {
    // The image view has 688 by 584 points. Dense screens have two pixels a point.
    for (int page = 0; page < helpPageCount; ++page) {
        controller.updateForPage(page);
        EXPECT_GE(image().width(), 1376) << page;
        EXPECT_GE(image().height(), 1168) << page;
    }
}

struct Spot {
    int x;  // in points of the image view, from its upper left
    int y;
    QColor color;
};

// The picture of each page is recognised by the colours of some points.
const QColor coral(0xD9, 0x4A, 0x2F);
const QColor deep(0x17, 0x50, 0x5A);
const QColor skin(0xF0, 0xC4, 0x9B);
const QColor soft(0xB5, 0xD0, 0xCA);
const QColor paper(0xF7, 0xF6, 0xF1);
const std::vector<Spot> spotsOfPages[helpPageCount] = {
    // The ring around the name, the face in it.
    {{486, 104, coral}, {486, 180, coral}, {438, 138, skin}},
    // The ring around "Export All Health Data", its left and its right end.
    {{344, 398, coral}, {344, 474, coral}, {144, 436, coral}, {544, 436, coral}},
    // The ring around "Export", the button in it.
    {{344, 306, coral}, {344, 386, coral}, {200, 346, deep}},
    // The ring around "Choose…", the cards of export.zip and export.xml.
    {{400, 286, coral}, {314, 316, coral}, {350, 60, soft}, {560, 60, soft}, {320, 100, paper}},
    // The title bar, the key caps.
    {{100, 40, soft}, {438, 328, coral}, {446, 316, paper}, {438, 427, coral}, {446, 416, paper}},
};

bool shows(const QImage& picture, const std::vector<Spot>& spots) {
    const double scale = picture.width() / 688.0;
    return std::all_of(spots.begin(), spots.end(), [&](const Spot& spot) {
        const QColor found =
            picture.pixelColor(static_cast<int>(spot.x * scale), static_cast<int>(spot.y * scale));
        constexpr int tolerance = 12;  // the compression changes the colours a little
        return std::abs(found.red() - spot.color.red()) <= tolerance &&
               std::abs(found.green() - spot.color.green()) <= tolerance &&
               std::abs(found.blue() - spot.color.blue()) <= tolerance;
    });
}

TEST_F(HelpWindowControllerTest, everyPageShowsItsOwnPicture) {
    for (int page = 0; page < helpPageCount; ++page) {
        controller.updateForPage(page);
        for (int other = 0; other < helpPageCount; ++other) {
            EXPECT_EQ(shows(image(), spotsOfPages[other]), page == other) << page << " " << other;
        }
    }
}

TEST_F(HelpWindowControllerTest, assistiveProgramsAreToldWhatEachPictureShows) {
    const QString words[] = {u"name in the upper right"_s, u"Export All Health Data"_s,
                             u"points at \"Export\""_s, u"Choose…"_s, u"range of days"_s};
    for (int page = 0; page < helpPageCount; ++page) {
        controller.updateForPage(page);
        EXPECT_TRUE(view<ImageView>("imageView").accessibleName().contains(words[page])) << page;
    }
}

TEST_F(HelpWindowControllerTest, textsGrowWithTheUsersFontLikeTheWindow) {
    std::optional<ScopedFontSize> large(26);
    HelpWindowController other(Bundle::main());
    const auto sizeOf = [&other](const char* name) {
        return other.window()->findChild<QWidget*>(QString::fromLatin1(name))->font().pixelSize();
    };
    EXPECT_EQ(sizeOf("captionField"), 26);
    EXPECT_EQ(sizeOf("pageIndicator"), 22);
    EXPECT_EQ(sizeOf("prevButton"), 26);
    EXPECT_EQ(other.window()->size(), QSize(1440, 1480));
    large.reset();
    EXPECT_TRUE(QTest::qWaitFor([&sizeOf] { return sizeOf("captionField") == 13; }));
}

class HelpPictureTest : public HelpWindowControllerTest {
  protected:
    // The tests tell pictures apart by their widths.
    void write(const QString& name, int width) const {
        QImage picture(width, 10, QImage::Format_RGB32);
        picture.fill(Qt::black);
        ASSERT_TRUE(picture.save(folder.filePath(name)));
    }

    int widthOfPage(int page) {
        HelpWindowController other(bundle);
        other.updateForPage(0);
        other.updateForPage(page);
        return other.window()->findChild<ImageView*>(u"imageView"_s)->image().width();
    }

    void SetUp() override { QDir(folder.path()).mkdir(u"Help"_s); }

    Bundle bundle{folder.filePath(u"Info.plist"_s), folder.path()};
};

TEST_F(HelpPictureTest, thePictureInTheHelpFolderIsPreferred) {
    write(u"Help/step_1.jpg"_s, 11);
    write(u"step_1.jpg"_s, 22);
    EXPECT_EQ(widthOfPage(0), 11);
}

TEST_F(HelpPictureTest, aPictureThatIsMissingInTheHelpFolderIsFoundInTheResourceFolder) {
    write(u"Help/step_1.jpg"_s, 11);
    write(u"step_2.jpg"_s, 22);
    EXPECT_EQ(widthOfPage(1), 22);
}

TEST_F(HelpPictureTest, theImageViewIsEmptyIfThePictureIsMissing) {
    write(u"Help/step_1.jpg"_s, 11);
    EXPECT_EQ(widthOfPage(1), 0);
}

TEST_F(HelpPictureTest, theImageViewIsEmptyIfThePictureCannotBeRead) {
    write(u"Help/step_1.jpg"_s, 11);
    QFile broken(folder.filePath(u"Help/step_2.jpg"_s));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
    broken.close();
    EXPECT_EQ(widthOfPage(1), 0);
}

TEST_F(HelpWindowControllerTest, everyCaptionFitsItsFieldAtTheSmallestSize) {
    show();
    controller.window()->resize(1, 1);
    QCoreApplication::processEvents();
    const Label& field = view<Label>("captionField");
    EXPECT_TRUE(field.wordWrap());
    EXPECT_EQ(field.alignment(), Qt::AlignLeading | Qt::AlignTop);
    for (int page = 0; page < helpPageCount; ++page) {
        controller.updateForPage(page);
        const QRect lines = field.fontMetrics().boundingRect(
            field.contentsRect(), Qt::TextWordWrap | Qt::AlignLeading | Qt::AlignTop, caption());
        EXPECT_TRUE(field.contentsRect().contains(lines)) << page;
    }
}

TEST_F(HelpWindowControllerTest, theCaptionsFontHas13PixelsAndTheIndicators11) {
    EXPECT_EQ(view<Label>("captionField").font().pixelSize(), 13);
    EXPECT_EQ(view<Label>("pageIndicator").font().pixelSize(), 11);
    EXPECT_EQ(view<Label>("pageIndicator").alignment(), Qt::AlignCenter);
}

TEST_F(HelpWindowControllerTest, theIndicatorHasTheSecondaryColourAndTheCaptionTheLabelColour) {
    expectColor("captionField", LabelColor::Label);
    expectColor("pageIndicator", LabelColor::SecondaryLabel);
}

TEST_F(HelpWindowControllerTest, theGuideCanBePagedByKeyboard) {
    show();
    EXPECT_TRUE(next().hasFocus());
    QTest::keyClick(&next(), Qt::Key_Return);
    EXPECT_EQ(indicator(), u"2 of 5"_s);
    QTest::keyClick(&next(), Qt::Key_Space);
    EXPECT_EQ(indicator(), u"3 of 5"_s);
    QTest::keyClick(&next(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(previous().hasFocus());
    QTest::keyClick(&previous(), Qt::Key_Space);
    QTest::keyClick(&previous(), Qt::Key_Space);
    expectFirstPage();
    EXPECT_TRUE(next().hasFocus());
}

TEST_F(HelpWindowControllerTest, aHeldReturnTurnsOnePage) {
    show();
    for (const bool repeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, {}, {}, repeated);
        QApplication::sendEvent(&next(), &press);
    }
    EXPECT_EQ(indicator(), u"2 of 5"_s);
}

TEST(HelpWindowController, concurrentFirstCallsReturnTheSameSharedController) {
    expectOneSharedController<HelpWindowController>();
}

}  // namespace

}  // namespace ambulet
