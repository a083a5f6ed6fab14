// What a user sees:
// - No text is cut or covers another, not even in a larger font or another language.
// - Every text has enough contrast.
// - The window follows a switch between light and dark.

#include "mainwindow/ControllerTest.h"
#include "support/Environment.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QToolTip>

#include <map>

namespace ambulet {

namespace {

QColor between(const QColor& from, const QColor& to, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()));
}

QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text,
                   const QColor& highlight) {
    QPalette palette(text, window, window.lighter(130), window.darker(130), window.darker(110),
                     text, text, base, window);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    // Disabled text gets a colour that is too faint to pass the tests. Text in an inactive window
    // gets a colour of its own.
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, between(text, window, 0.7F));
        palette.setColor(QPalette::Inactive, role, between(text, window, 0.2F));
    }
    return palette;
}

const QPalette light = paletteOf(QColor(239, 239, 239), Qt::white, Qt::black, QColor(48, 140, 198));
const QPalette dark =
    paletteOf(QColor(49, 54, 59), QColor(35, 38, 41), QColor(239, 240, 241), QColor(61, 174, 233));

const QPalette gtk =
    paletteOf(QColor(250, 250, 250), Qt::white, QColor(46, 52, 54), QColor(53, 132, 228));
const QPalette kde = paletteOf(QColor(239, 240, 241), QColor(252, 252, 252), QColor(35, 38, 41),
                               QColor(61, 174, 233));

class LooksTest : public ControllerTest {
  protected:
    LooksTest() : _palette(QApplication::palette()), _font(QApplication::font()) {}
    ~LooksTest() override {
        controller.reset();
        QApplication::setPalette(_palette);
        QApplication::setFont(_font);
        qputenv("LC_ALL", "en_US.UTF-8");
    }

    // Loads large numbers of steps, in months with long names.
    MainWindowController& loadLongTexts() {
        return load({{"2024-09-30", "98765"},
                     {"2024-09-29", "99999"},
                     {"2024-12-28", "88888"},
                     {"2024-11-27", "77777"},
                     {"2024-02-26", "66666"},
                     {"2023-09-25", "8888888"}});
    }

    // Resizes the window to its minimum size. After a change of a text or a font, the minimum size
    // is known only after several iterations of the event loop.
    void settle() const {
        QWidget& window = *controller->window();
        QCoreApplication::processEvents();
        ASSERT_TRUE(QTest::qWaitFor(
            [&window] { return window.minimumSize() == window.minimumSizeHint(); }));
        window.resize(window.minimumSize());
        QCoreApplication::processEvents();
    }

    void expectNoTextIsCut(const std::string& what) const {
        QList<QRect> taken;
        for (const QLabel* label : statisticsLabels()) {
            expectFits(*label, label->text(), label->contentsRect().width(), what);
            for (const QRect& other : taken) {
                EXPECT_FALSE(other.intersects(label->geometry())) << what;
            }
            taken.append(label->geometry());
            EXPECT_TRUE(controller->controlsPanel()->rect().contains(label->geometry())) << what;
        }
        const QLabel& statusLabel = *controller->statusLabel();
        expectFits(statusLabel, statusLabel.text(), statusLabel.contentsRect().width(), what);
        const auto* button = controller->window()->findChild<QPushButton*>();
        expectFits(*button, button->text(), button->width(), what);

        const TableView& table = *controller->tableView();
        const int margin =
            2 *
            (table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &table) + 1 + 11);
        for (int column = 0; column < 4; ++column) {
            expectFits(table, table.model()->headerData(column, Qt::Horizontal).toString(),
                       table.columnWidth(column) - margin, what);
            for (int row = 0; row < table.model()->rowCount(); ++row) {
                QFont font = table.font();
                font.setBold(controller->isGroupRow(row));
                const QString text = table.model()->index(row, column).data().toString();
                EXPECT_LE(QFontMetrics(font).horizontalAdvance(text),
                          table.columnWidth(column) - margin)
                    << what << ": " << qPrintable(text);
            }
        }
    }

  private:
    static void expectFits(const QWidget& view, const QString& text, int width,
                           const std::string& what) {
        EXPECT_LE(view.fontMetrics().horizontalAdvance(text), width)
            << what << ": " << qPrintable(text);
        EXPECT_LE(view.fontMetrics().height(), view.height()) << what << ": " << qPrintable(text);
    }

    QPalette _palette;
    QFont _font;
};

TEST_F(LooksTest, noTextIsCutAtTheMinimumSizeInEightLanguagesAndALargerFont) {
    const double size = QApplication::font().pointSizeF();
    for (const auto& [family, factor] :
         {std::pair("DejaVu Sans", 1.0), {"DejaVu Sans", 1.5}, {"Noto Sans", 1.5}}) {
        QFont font(QLatin1String{family});
        ASSERT_EQ(QFontInfo(font).family().toStdString(), family) << "tools/setup installs it";
        font.setPointSizeF(size * factor);
        QApplication::setFont(font);
        for (const char* locale :
             {"en_US", "de_DE", "fr_FR", "es_ES", "ar_EG", "ja_JP", "hi_IN", "th_TH"}) {
            qputenv("LC_ALL", QByteArray(locale) + ".UTF-8");
            loadLongTexts();
            settle();
            const std::string what = std::string(locale) + ' ' + family + " × ";
            expectNoTextIsCut(what + std::to_string(factor));
            controller->tableView()->selectRowIndexes({1, 2});
            settle();
            expectNoTextIsCut("selected, " + what + std::to_string(factor));
            EXPECT_EQ(controller->window()->layoutDirection(), Qt::LeftToRight);
        }
    }
}

TEST_F(LooksTest, theWindowFollowsAFontThatChangesWhileTheProgramRuns) {
    loadLongTexts();
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    QApplication::setFont(font);
    settle();
    expectNoTextIsCut("larger font");
}

TEST_F(LooksTest, theTooltipOfALabelsTextThatDoesNotFitHasTheWholeText) {
    load({{"2025-03-02", "4000"}});
    QList<QLabel*> labels{controller->statusLabel()};
    for (QLabel* label : statisticsLabels()) {
        labels.append(label);
    }
    for (QLabel* label : labels) {
        label->setText(label->text() + QString(1000, u'8'));
        QHelpEvent event(QEvent::ToolTip, {5, 5}, label->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(label, &event);
        EXPECT_EQ(QToolTip::text().section(u'\n', 0, 0), label->text());
    }
    QToolTip::hideText();
}

TEST_F(LooksTest, theMinimumSizeIsBetween560By300And700By420) {
    load({{"2025-03-02", "4000"}});
    settle();
    const QSize minimum = controller->window()->minimumSizeHint();
    EXPECT_GE(minimum.width(), 560);
    EXPECT_LE(minimum.width(), 700);
    EXPECT_GE(minimum.height(), 300);
    EXPECT_LE(minimum.height(), 420);
}

// The highest contrast of any pixel with the most frequent colour. In a picture of a text, that
// colour is the background, and the pixel is inside a stroke.
double bestContrast(const QImage& picture) {
    std::map<QRgb, int> count;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++count[picture.pixel(x, y)];
        }
    }
    const auto most =
        std::max_element(count.begin(), count.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double best = 1;
    for (const auto& [color, pixels] : count) {
        best = std::max(best, contrastRatio(QColor(most->first), QColor(color)));
    }
    return best;
}

TEST_F(LooksTest, everyTextHasAContrastOfFourAndAHalfInActiveAndInactiveWindows) {
    for (const auto& [palette, inFront] : {std::pair(light, true),
                                           {light, false},
                                           {dark, true},
                                           {dark, false},
                                           {gtk, true},
                                           {gtk, false},
                                           {kde, true},
                                           {kde, false}}) {
        QApplication::setPalette(palette);
        load({{"2025-03-02", "4000"}, {"2025-03-01", "5000"}});
        controller->window()->activateWindow();
        controller->tableView()->setFocus();
        click(2);
        controller->strideDidClick();  // opens the editor with its text selected
        QWidget other;
        if (!inFront) {
            other.show();
            other.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        }
        ASSERT_EQ(controller->window()->isActiveWindow(), inFront);
        QCoreApplication::processEvents();
        const QImage picture = controller->window()->grab().toImage();
        const auto expectContrast = [&](const QWidget* view, QRect part, const char* what) {
            EXPECT_GE(bestContrast(picture.copy(
                          QRect(view->mapTo(controller->window(), part.topLeft()), part.size()))),
                      textContrast)
                << what;
        };
        for (const QLabel* label : statisticsLabels()) {
            expectContrast(label, label->rect(), qPrintable(label->text()));
        }
        expectContrast(controller->statusLabel(), controller->statusLabel()->rect(), "status");
        expectContrast(controller->filePathField(),
                       controller->filePathField()->rect().adjusted(4, 4, -4, -4), "path");
        expectContrast(controller->strideEditor(), QRect(4, 5, 26, 12),
                       "selected text of the editor");
        const auto* button = controller->window()->findChild<QPushButton*>();
        expectContrast(button, button->rect().adjusted(8, 6, -8, -6), "button");
        const TableView& table = *controller->tableView();
        expectContrast(table.horizontalHeader(), QRect(10, 4, 60, 14), "header");
        for (int row = 0; row < 3; ++row) {
            expectContrast(table.viewport(), table.visualRect(table.model()->index(row, 0)), "row");
        }
    }
}

// A picture of `part`, which is in the coordinates of `view`, as the window shows it.
QImage pictureOf(const QWidget& view, QRect part) {
    part.moveTopLeft(view.mapTo(view.window(), part.topLeft()));
    return view.window()->grab(part).toImage();
}

TEST_F(LooksTest, theTextsOfAnEmptyWindowHaveEnoughContrast) {
    for (const QPalette& palette : {light, dark, gtk, kde}) {
        QApplication::setPalette(palette);
        makeController().showWindow();
        QCoreApplication::processEvents();
        const QLineEdit& path = *controller->filePathField();
        EXPECT_GE(bestContrast(pictureOf(path, path.rect().adjusted(4, 4, -4, -4))), textContrast);
        const QWidget& rows = *controller->tableView()->viewport();
        EXPECT_GE(bestContrast(pictureOf(rows, rows.rect())), textContrast);
    }
}

TEST_F(LooksTest, theTextsOfSelectedAndPinnedMonthRowsHaveEnoughContrast) {
    for (const QPalette& palette : {light, dark, gtk, kde}) {
        QApplication::setPalette(palette);
        loadLongTexts();
        settle();
        TableView& table = *controller->tableView();
        const auto contrastOfRow = [&](QRect row) {
            return bestContrast(pictureOf(*table.viewport(), row.adjusted(0, 2, 0, -2)));
        };
        for (const bool selected : {false, true}) {
            table.selectRowIndexes(selected ? std::vector<int>{0} : std::vector<int>{});
            table.verticalScrollBar()->setValue(0);
            EXPECT_GE(contrastOfRow(table.visualRect(table.model()->index(0, 0))), textContrast);
            table.verticalScrollBar()->setValue(3);
            const QRect pinned = table.pinnedRect();
            ASSERT_FALSE(pinned.isNull());
            EXPECT_GE(contrastOfRow(pinned), textContrast);
        }
    }
}

// The number of pixels that mark a view: those that have enough contrast both with the same pixels
// of the view without the mark, and with the background `ground`.
int pixelsOfMark(const QImage& with, const QImage& without, const QColor& ground) {
    int marked = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const QColor color = with.pixelColor(x, y);
            marked += contrastRatio(color, without.pixelColor(x, y)) >= markContrast &&
                      contrastRatio(color, ground) >= markContrast;
        }
    }
    return marked;
}

TEST_F(LooksTest, everyFocusOutlineHasEnoughContrastWithItsBackground) {
    for (const QPalette& palette : {light, dark, gtk, kde}) {
        QApplication::setPalette(palette);
        load({{"2025-03-02", "4000"}});
        QWidget& window = *controller->window();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        window.setAttribute(Qt::WA_KeyboardFocusChange);  // like the Tab key
        auto* const button = window.findChild<QPushButton*>();
        const QColor ground = palette.color(QPalette::Window);
        const QColor base = palette.color(QPalette::Base);
        const QColor ofButton = palette.color(QPalette::Button);
        for (const auto& [control, beside] :
             std::initializer_list<std::pair<QWidget*, QColor>>{{button, ofButton},
                                                                {controller->filePathField(), base},
                                                                {controller->milesLabel(), ground},
                                                                {controller->tableView(), base}}) {
            window.setFocus();
            const QImage without = pictureOf(*control, control->rect());
            control->setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(control->hasFocus());
            controller->filePathField()->deselect();  // selected text is not an outline
            const QImage with = pictureOf(*control, control->rect());
            // An outline is a little smaller than its view. The outline of the miles label
            // surrounds only the text.
            const int width =
                control == controller->milesLabel() ? control->sizeHint().width() : with.width();
            EXPECT_GE(pixelsOfMark(with, without, beside), 2 * (width + with.height()) - 60)
                << control->metaObject()->className();
        }
    }
}

TEST_F(LooksTest, theFocusOutlineOfTheStrideEditorHasEnoughContrastWithItsBackground) {
    for (const QPalette& palette : {light, dark, gtk, kde}) {
        QApplication::setPalette(palette);
        load({{"2025-03-02", "4000"}});
        controller->window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
        controller->strideDidClick();
        QLineEdit& editor = *controller->strideEditor();
        ASSERT_TRUE(editor.hasFocus());
        editor.deselect();  // selected text is not an outline
        const QImage with = pictureOf(editor, editor.rect());
        // The editor stays open if another window is activated.
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        ASSERT_FALSE(editor.hasFocus());
        const QImage without = pictureOf(editor, editor.rect());
        // The outline is inside the frame of the field.
        EXPECT_GE(pixelsOfMark(with, without, palette.color(QPalette::Base)),
                  2 * (with.width() + with.height()) - 24);
    }
}

TEST_F(LooksTest, everySeparatorHasEnoughContrastOnBothSides) {
    for (const QPalette& palette : {light, dark, gtk, kde}) {
        QApplication::setPalette(palette);
        loadLongTexts();
        settle();
        TableView& table = *controller->tableView();
        table.verticalScrollBar()->setValue(3);
        const QRect pinned = table.pinnedRect();
        ASSERT_FALSE(pinned.isNull());
        const QImage picture = controller->window()->grab().toImage();
        const auto expectLine = [&](const QWidget& view, QPoint at, QPoint step, const char* what) {
            const QPoint place = view.mapTo(controller->window(), at);
            for (const QPoint beside : {place - step, place + step}) {
                EXPECT_GE(contrastRatio(picture.pixelColor(place), picture.pixelColor(beside)),
                          markContrast)
                    << what;
            }
        };
        const QFrame& box = *controller->separatorBox();
        ASSERT_EQ(box.height(), 1);
        expectLine(box, {5, 0}, {0, 1}, "separator");
        const QHeaderView& header = *table.horizontalHeader();
        const int edge = header.sectionSize(0) - 1;
        expectLine(header, {edge, header.height() / 2}, {1, 0}, "between headers");
        expectLine(header, {5, header.height() - 1}, {0, 1}, "below the headers");
        expectLine(*table.viewport(), pinned.bottomLeft() + QPoint(5, 0), {0, 1},
                   "below the pinned row");
    }
}

TEST_F(LooksTest, theWindowFollowsASwitchOfThePalette) {
    const auto picture = [this] {
        controller->window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(controller->window()));
        click(2);
        QCoreApplication::processEvents();
        return controller->window()->grab().toImage();
    };
    QApplication::setPalette(light);
    load({{"2025-03-02", "4000"}, {"2025-03-01", "5000"}});
    const QImage first = picture();
    QApplication::setPalette(dark);
    const QImage switched = picture();
    controller.reset();
    load(path("export.xml"));
    EXPECT_NE(switched, first);
    EXPECT_EQ(switched, picture());
}

class PicturesTest : public LooksTest {
  protected:
    PicturesTest() { EXPECT_TRUE(pictures.mkpath(QStringLiteral("."))); }

    void save(const QString& name, double scale = 1) const {
        QCoreApplication::processEvents();
        QImage picture((QSizeF(controller->window()->size()) * scale).toSize(),
                       QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        controller->window()->render(&picture);
        EXPECT_TRUE(picture.save(pictures.filePath(QStringLiteral("window-%1.png").arg(name))));
    }

    void loadAndSelect() {
        loadLongTexts();
        controller->window()->activateWindow();
        click(1);
        click(6, Qt::ShiftModifier);
    }

    // Makes the window small, scrolls so that a month row is pinned, and shows the focus outline.
    void scrollAndMark() {
        settle();
        controller->tableView()->setFocus(Qt::TabFocusReason);
        controller->tableView()->verticalScrollBar()->setValue(30);
    }

    const QDir pictures{QStringLiteral(AMBULET_PICTURES)};
};

TEST_F(PicturesTest, writesPicturesOfEachPalette) {
    for (const auto& [palette, name] : {std::pair(light, QStringLiteral("light")),
                                        {dark, QStringLiteral("dark")},
                                        {gtk, QStringLiteral("gtk")},
                                        {kde, QStringLiteral("kde")}}) {
        QApplication::setPalette(palette);
        UserDefaults nothing(path("nothing.ini"));
        controller = std::make_unique<MainWindowController>(nothing, Bundle::main());
        controller->showWindow();
        save(name + QStringLiteral("-empty"));
        loadAndSelect();
        controller->window()->resize(1200, 700);
        save(name + QStringLiteral("-wide"));
        controller->window()->setAttribute(Qt::WA_KeyboardFocusChange);  // like the Tab key
        controller->window()->findChild<QPushButton*>()->setFocus(Qt::TabFocusReason);
        save(name + QStringLiteral("-focus-button"));
        controller->filePathField()->setFocus(Qt::TabFocusReason);
        save(name + QStringLiteral("-focus-path"));
        controller->strideDidClick();
        save(name + QStringLiteral("-editor"));
        controller->cancelStrideEdit();
        scrollAndMark();
        save(name + QStringLiteral("-minimum"));
        controller->tableView()->selectRowIndexes({0, 5});
        save(name + QStringLiteral("-months-selected"));
    }
}

TEST_F(PicturesTest, writesPicturesOfEachScale) {
    QApplication::setPalette(light);
    loadAndSelect();
    for (const double scale : {1.0, 1.5, 2.0}) {
        save(QStringLiteral("scale-%1").arg(scale), scale);
    }
}

TEST_F(PicturesTest, writesPicturesInSixLanguagesAndALargeFont) {
    QApplication::setPalette(light);
    for (const char* locale : {"de_DE", "ar_EG", "he_IL", "fa_IR", "ja_JP", "th_TH"}) {
        const ScopedLocale language(locale + std::string(".UTF-8"));
        loadAndSelect();
        save(QLatin1String(locale));
    }
    QFont font = QApplication::font();
    font.setPointSizeF(20);
    QApplication::setFont(font);
    loadAndSelect();
    save(QStringLiteral("large-font"));
    controller->strideDidClick();
    save(QStringLiteral("large-font-editor"));
}

}  // namespace

}  // namespace ambulet
