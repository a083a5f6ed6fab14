#include "app/ApplicationIcon.h"

#include "platform/Bundle.h"

#include <QPixmap>
#include <QTemporaryDir>
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

TEST(ApplicationIcon, theIconIsNullIfTheBundleHasNone) {
    const QTemporaryDir folder;
    EXPECT_TRUE(applicationIcon(Bundle(folder.filePath(u"none"_s), folder.path())).isNull());
}

}  // namespace

}  // namespace ambulet
