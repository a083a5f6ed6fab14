#include "mainwindow/ControllerTest.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>

namespace ambulet {

namespace {

class WindowTest : public ControllerTest {
  protected:
    // The distances of a view's edges from the window's edges.
    static QMargins distances(const QWidget* view) {
        const QRect frame(view->mapTo(view->window(), QPoint(0, 0)), view->size());
        const QSize window = view->window()->size();
        return {frame.left(), frame.top(), window.width() - frame.right() - 1,
                window.height() - frame.bottom() - 1};
    }
};

TEST_F(WindowTest, theTitleIsTheDisplayNameAndTheProductsName) {
    EXPECT_EQ(makeController().window()->windowTitle(), QStringLiteral("Daily Steps — Ambulet"));
}

TEST_F(WindowTest, theTitleHasTheProcessNameIfThereIsNoDisplayName) {
    const Bundle nameless(path("none.plist"), folder.path());
    MainWindowController other(defaults, nameless);
    EXPECT_EQ(other.window()->windowTitle(), QStringLiteral("test_mainwindow — Ambulet"));
}

TEST_F(WindowTest, theRememberedPathIsShownBeforeAnyDataHasLoaded) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "4000"}});
    makeController(file).showWindow();
    EXPECT_EQ(controller->filePathField()->text(), file);
    EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
    EXPECT_TRUE(controller->allSteps().empty());
}

TEST_F(WindowTest, thePathFieldIsEmptyIfNoFileIsRemembered) {
    makeController().showWindow();
    EXPECT_EQ(controller->filePathField()->text(), QString());
}

TEST_F(WindowTest, setupTableColumnsReplacesAllColumnsByTheFourOfTheDayTable) {
    makeController().showWindow();
    controller->tableView()->setColumns(
        {{QStringLiteral("old"), QStringLiteral("Old"), 50, 50, {}}});
    controller->setupTableColumns();
    const QAbstractItemModel& model = *controller->tableView()->model();
    ASSERT_EQ(model.columnCount(), 4);
    const struct {
        const char16_t* identifier;
        const char16_t* title;
        int width;
        int minimumWidth;
        bool right;
    } expected[] = {{u"date", u"Date", 170, 80, false},
                    {u"steps", u"Steps", 110, 60, true},
                    {u"avgSteps", u"Daily Steps", 160, 80, true},
                    {u"avgMiles", u"Daily Miles", 160, 80, true}};
    for (int column = 0; column < 4; ++column) {
        const TableColumn& made =
            controller->tableView()->columns()[static_cast<std::size_t>(column)];
        EXPECT_EQ(made.identifier, QStringView(expected[column].identifier));
        EXPECT_EQ(model.headerData(column, Qt::Horizontal).toString(),
                  QStringView(expected[column].title));
        EXPECT_EQ(made.width, expected[column].width);
        if (column < 3) {  // the last column takes the rest of the width
            EXPECT_EQ(controller->tableView()->columnWidth(column), expected[column].width);
        }
        EXPECT_EQ(made.minimumWidth, expected[column].minimumWidth);
        EXPECT_EQ(made.alignment.testFlag(Qt::AlignRight), expected[column].right);
    }
    EXPECT_TRUE(controller->tableView()->horizontalHeader()->isVisible());
}

TEST_F(WindowTest, onlyTheTableGetsTallerWithTheWindow) {
    load({{"2025-03-02", "4000"}});
    QWidget& window = *controller->window();
    controller->progressIndicator()->show();
    window.resize(720, 640);
    QCoreApplication::processEvents();

    const QList<QWidget*> views = {controller->controlsPanel(), controller->separatorBox(),
                                   controller->scrollView(), controller->statusLabel(),
                                   controller->progressIndicator()};
    QList<QMargins> before;
    QList<QSize> sizes;
    for (const QWidget* view : views) {
        before.append(distances(view));
        sizes.append(view->size());
    }
    window.resize(720 + 130, 640 + 210);
    QCoreApplication::processEvents();

    const QSize wider(130, 0);
    const struct {
        QSize growth;
        bool top;     // the view keeps its distance from the window's top edge
        bool bottom;  // the view keeps its distance from the window's bottom edge
    } expected[] = {
        {wider, true, false}, {wider, true, false},       {QSize(130, 210), true, true},
        {wider, false, true}, {QSize(0, 0), false, true},
    };
    for (int i = 0; i < views.size(); ++i) {
        const QMargins after = distances(views[i]);
        EXPECT_EQ(views[i]->size(), sizes[i] + expected[i].growth) << i;
        EXPECT_EQ(after.left(), before[i].left()) << i;
        if (expected[i].top) {
            EXPECT_EQ(after.top(), before[i].top()) << i;
        }
        if (expected[i].bottom) {
            EXPECT_EQ(after.bottom(), before[i].bottom()) << i;
        }
    }
}

TEST_F(WindowTest, theMilesLabelIsDirectlyInTheControlsPanel) {
    makeController().showWindow();
    EXPECT_EQ(controller->milesLabel()->parentWidget(), controller->controlsPanel());
}

TEST_F(WindowTest, theButtonIsTitledChoose) {
    makeController().showWindow();
    const auto* button = controller->window()->findChild<QPushButton*>();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("Choose…"));
}

TEST_F(WindowTest, theInitialSizeIs880By720) {
    makeController().showWindow();
    EXPECT_EQ(controller->window()->size(), QSize(880, 720));
}

TEST_F(WindowTest, aWindowLargerThanTheScreenIsFittedToTheScreenAtTheStart) {
    makeController().window()->setGeometry(100, 100, 5000, 4000);
    controller->showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(controller->window()));
    EXPECT_EQ(controller->window()->frameGeometry(),
              QGuiApplication::primaryScreen()->availableGeometry());
}

TEST_F(WindowTest, severalRowsCanBeSelected) {
    load({{"2025-03-02", "1"}, {"2025-03-01", "1"}});
    click(1);
    click(2, Qt::ControlModifier);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1, 2}));
}

TEST_F(WindowTest, positionAndSizeAreStoredWhenTheWindowCloses) {
    makeController().showWindow();
    controller->window()->setGeometry(40, 60, 650, 500);
    QCoreApplication::processEvents();
    controller->window()->close();
    makeController().showWindow();
    EXPECT_EQ(controller->window()->geometry(), QRect(40, 60, 650, 500));
}

TEST_F(WindowTest, positionAndSizeAreStoredWhenTheProgramQuits) {
    makeController().showWindow();
    controller->window()->setGeometry(40, 60, 650, 500);
    QCoreApplication::processEvents();
    ASSERT_TRUE(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
    makeController().showWindow();
    EXPECT_EQ(controller->window()->geometry(), QRect(40, 60, 650, 500));
}

// Otherwise the frame would be lost if the process were killed.
TEST_F(WindowTest, aMoveOrResizeIsStoredSoonAfterwards) {
    makeController().showWindow();
    QWidget& window = *controller->window();
    const auto isStored = [&] {
        return UserDefaults(path("settings.ini")).data(QStringLiteral("MainWindowFrame")) ==
               window.saveGeometry();
    };
    ASSERT_TRUE(QTest::qWaitFor(isStored));  // the initial frame
    window.move(40, 60);
    QCoreApplication::processEvents();
    ASSERT_FALSE(isStored());
    EXPECT_TRUE(QTest::qWaitFor(isStored));
    window.resize(650, 500);
    QCoreApplication::processEvents();
    ASSERT_FALSE(isStored());
    EXPECT_TRUE(QTest::qWaitFor(isStored));
}

TEST_F(WindowTest, aWindowOnAScreenThatNoLongerExistsIsMovedToAnother) {
    makeController().showWindow();
    controller->window()->setGeometry(5000, 4000, 650, 500);
    QCoreApplication::processEvents();
    controller->window()->close();
    makeController().showWindow();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(controller->window()->geometry()));
    EXPECT_EQ(controller->window()->size(), QSize(650, 500));
}

TEST_F(WindowTest, aMaximisedWindowIsMaximisedAtTheNextStart) {
    makeController().showWindow();
    controller->window()->showMaximized();
    QCoreApplication::processEvents();
    const QRect zoomed = controller->window()->geometry();
    controller->window()->close();
    makeController().showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(controller->window()));
    EXPECT_TRUE(controller->window()->isMaximized());
    EXPECT_EQ(controller->window()->geometry(), zoomed);
}

TEST_F(WindowTest, aDamagedFrameInTheSettingsIsIgnored) {
    defaults.setData(QStringLiteral("MainWindowFrame"), QByteArray("no frame"));
    makeController().showWindow();
    EXPECT_EQ(controller->window()->size(), QSize(880, 720));
}

TEST_F(WindowTest, tabGoesFromTheButtonToThePathTheMilesTheTableAndBack) {
    load({{"2025-03-02", "1"}});
    controller->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
    auto* const button = controller->window()->findChild<QPushButton*>();
    button->setFocus();
    for (const QWidget* next :
         std::initializer_list<QWidget*>{controller->filePathField(), controller->milesLabel(),
                                         controller->tableView(), button}) {
        QTest::keyClick(controller->window()->windowHandle(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next);
    }
}

TEST_F(WindowTest, thePathCanBeSelectedAndCopiedByKeyboard) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    load(file);
    controller->filePathField()->setFocus(Qt::TabFocusReason);
    QTest::keySequence(controller->filePathField(), QKeySequence::SelectAll);
    QTest::keySequence(controller->filePathField(), QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), file);
}

TEST_F(WindowTest, controlWClosesTheWindow) {
    makeController().showWindow();
    controller->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
    QTest::keyClick(controller->window()->windowHandle(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(controller->window()->isVisible());
}

TEST_F(WindowTest, thePathFieldAndTheTableShowHintsUntilAFileIsChosen) {
    makeController();
    EXPECT_TRUE(controller->textOfEmptyTable().contains(QStringLiteral("export.zip")));
    controller->showWindow();
    EXPECT_EQ(controller->filePathField()->placeholderText(),
              QStringLiteral("No export file chosen yet"));
    EXPECT_EQ(controller->filePathField()->text(), QString());
    makeController(QStringLiteral("/no/such/file.xml"));
    EXPECT_TRUE(controller->textOfEmptyTable().isNull());
}

QImage drawn(QLabel& label, double scale) {
    QImage picture((QSizeF(label.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    label.render(&picture);
    return picture.copy(0, 0, qRound(50 * scale), picture.height());
}

TEST_F(WindowTest, theLabelsOfALineHaveTheSameBaselineInEachFontAndAtEachScale) {
    load({{"2025-03-02", "4000"}});
    QLabel& to = *controller->toLabel();
    QLabel& miles = *controller->milesLabel();
    for (const char* family : {"DejaVu Sans", "Noto Sans", "Cantarell"}) {
        QFont font(QLatin1String{family});
        ASSERT_EQ(QFontInfo(font).family().toStdString(), family) << "tools/setup installs it";
        for (const double size : {8.0, 9.0, 9.5, 10.0, 11.0, 13.0, 14.5, 18.0}) {
            font.setPointSizeF(size);
            controller->window()->setFont(font);
            to.setText(QStringLiteral("Hxg"));
            miles.setText(to.text());
            QCoreApplication::processEvents();
            EXPECT_EQ(miles.y(), to.y());
            EXPECT_EQ(miles.height(), to.height());
            for (const double scale : {1.0, 1.5, 2.0}) {
                EXPECT_EQ(drawn(miles, scale), drawn(to, scale))
                    << family << ' ' << size << " × " << scale;
            }
        }
    }
}

TEST_F(WindowTest, tabLeavesTheTableFromAnyRow) {
    load({{"2025-03-02", "1"}, {"2025-03-01", "1"}});
    controller->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
    for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        click(1);
        ASSERT_TRUE(controller->tableView()->currentIndex().isValid());
        ASSERT_EQ(QApplication::focusWidget(), controller->tableView());
        QTest::keyClick(controller->window()->windowHandle(), key);
        const QWidget* next =
            key == Qt::Key_Tab
                ? static_cast<QWidget*>(controller->window()->findChild<QPushButton*>())
                : controller->milesLabel();
        EXPECT_EQ(QApplication::focusWidget(), next);
        EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
    }
}

TEST_F(WindowTest, aHugeStrideDoesNotRaiseTheMinimumWidthAbove1000) {
    defaults.setDouble(SettingsKeys::strideFootLength, 1e300);
    load({{"2025-03-02", "4000"}});
    QCoreApplication::processEvents();
    EXPECT_LE(controller->window()->minimumSizeHint().width(), 1000);
}

}  // namespace

}  // namespace ambulet
