#include "platform/FileIdentity.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

TEST(FileIdentity, withABirthTimeInodeAndBirthTimeTellFilesApart) {
    const FileIdentity file{8, 42, FileIdentity::Time{1000, 5}};
    const struct {
        FileIdentity other;
        bool same;
    } cases[] = {
        {{8, 42, FileIdentity::Time{1000, 5}}, true},
        {{8, 43, FileIdentity::Time{1000, 5}}, false},
        {{8, 42, FileIdentity::Time{1000, 6}}, false},  // the inode number is used again
        {{8, 42, FileIdentity::Time{1001, 5}}, false},
        {{9, 42, FileIdentity::Time{1000, 5}}, true},  // the device has another number now
        {{8, 42, std::nullopt}, false},
    };
    for (const auto& [other, same] : cases) {
        EXPECT_EQ(file.isSameFileAs(other), same);
        EXPECT_EQ(other.isSameFileAs(file), same);
    }
}

TEST(FileIdentity, withoutABirthTimeInodeAndDeviceTellFilesApart) {
    const FileIdentity file{8, 42, std::nullopt};
    EXPECT_TRUE(file.isSameFileAs({8, 42, std::nullopt}));
    EXPECT_FALSE(file.isSameFileAs({8, 43, std::nullopt}));
    EXPECT_FALSE(file.isSameFileAs({9, 42, std::nullopt}));
}

TEST(FileIdentity, isOfTheFileUnderWhateverName) {
    const TestFolder folder;
    const QString file = folder.write(u"file"_s);
    const auto identity = FileIdentity::ofFile(file);
    ASSERT_TRUE(identity);
    ASSERT_TRUE(QFile::link(file, folder.path(u"link"_s)));
    EXPECT_TRUE(FileIdentity::ofFile(folder.path(u"link"_s))->isSameFileAs(*identity));
    ASSERT_TRUE(QFile::rename(file, folder.path(u"renamed"_s)));
    folder.write(u"file"_s);
    EXPECT_TRUE(FileIdentity::ofFile(folder.path(u"renamed"_s))->isSameFileAs(*identity));
    EXPECT_FALSE(FileIdentity::ofFile(file)->isSameFileAs(*identity));
}

TEST(FileIdentity, isThatOfTheFileSystem) {
    const TestFolder folder;
    const QString file = folder.write(u"file"_s);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    const auto identity = FileIdentity::ofFile(file);
    ASSERT_TRUE(identity);
    EXPECT_EQ(identity->inode, status.st_ino);
    EXPECT_EQ(identity->device, status.st_dev);
    EXPECT_EQ(FileIdentity::deviceOfFolder(folder.path()), status.st_dev);
}

TEST(FileIdentity, isNoneOfWhatIsNoRegularFile) {
    const TestFolder folder;
    EXPECT_FALSE(FileIdentity::ofFile(folder.path()));
    EXPECT_FALSE(FileIdentity::ofFile(folder.path(u"missing"_s)));
    EXPECT_FALSE(FileIdentity::ofFile(folder.makeFIFO(u"fifo"_s)));
    EXPECT_FALSE(FileIdentity::ofFile(u"/dev/null"_s));
    EXPECT_FALSE(FileIdentity::ofFile({}));
    EXPECT_FALSE(FileIdentity::deviceOfFolder(folder.write(u"file"_s)));
    EXPECT_FALSE(FileIdentity::deviceOfFolder(folder.path(u"missing"_s)));
}

}  // namespace

}  // namespace ambulet
