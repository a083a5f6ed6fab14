#include "app/ApplicationIcon.h"

#include "platform/Bundle.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

TEST(ApplicationIcon, theIconHasTheSizesThatDesktopsUse) {
    const QIcon icon = applicationIcon(Bundle::main());
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        EXPECT_EQ(icon.pixmap(QSize(size, size), 1).size(), QSize(size, size));
        EXPECT_TRUE(icon.availableSizes().contains(QSize(size, size)));
    }
}

TEST(ApplicationIcon, everyShapeHasAContrastOfAtLeastTwoToOneWithWhatIsBehindIt) {
    const QImage icon = applicationIcon(Bundle::main()).pixmap(QSize(256, 256), 1).toImage();
    struct {
        const char* what;
        QPoint shape, behind;
    } const cases[] = {{"left sole on the ground", {90, 100}, {60, 100}},
                       {"right sole on the ground", {155, 60}, {190, 60}},
                       {"left sole on a bar", {100, 190}, {122, 190}},
                       {"right sole on a bar", {160, 165}, {137, 165}},
                       {"first bar", {45, 190}, {45, 165}},
                       {"last bar", {205, 100}, {205, 80}}};
    for (const auto& one : cases) {
        EXPECT_GE(contrastRatio(icon.pixelColor(one.shape), icon.pixelColor(one.behind)), 2)
            << one.what;
    }
}

TEST(ApplicationIcon, smallSizesAreSetAtOnceAndAllSizesAfterTheFirstPaint) {
    const QIcon before = QApplication::windowIcon();
    QWidget window;
    setApplicationIcon(Bundle::main());
    const QList<QSize> small = {{16, 16}, {22, 22}, {24, 24}, {32, 32}};
    EXPECT_EQ(QApplication::windowIcon().availableSizes(), small);
    window.show();
    EXPECT_EQ(QApplication::windowIcon().availableSizes(), small);
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return QApplication::windowIcon().availableSizes().contains(QSize(256, 256)); }));
    QApplication::setWindowIcon(before);
}

TEST(ApplicationIcon, theIconIsNullIfTheBundleHasNone) {
    const QTemporaryDir folder;
    EXPECT_TRUE(applicationIcon(Bundle(folder.filePath(u"none"_s), folder.path())).isNull());
}

}  // namespace

}  // namespace ambulet
