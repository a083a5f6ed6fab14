#include "platform/FileIdentity.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

TEST(FileIdentity, inodeAndBirthTimeIdentifyAFile) {
    const FileIdentity file{8, 42, FileIdentity::Time{1000, 5}};
    const struct {
        FileIdentity other;
        bool same;
    } cases[] = {
        {{8, 42, FileIdentity::Time{1000, 5}}, true},
        {{8, 43, FileIdentity::Time{1000, 5}}, false},
        {{8, 42, FileIdentity::Time{1000, 6}}, false},  // the inode number was reused
        {{8, 42, FileIdentity::Time{1001, 5}}, false},
        {{9, 42, FileIdentity::Time{1000, 5}}, true},  // the device number has changed
        {{8, 42, std::nullopt}, false},
    };
    for (const auto& [other, same] : cases) {
        EXPECT_EQ(file.isSameFileAs(other), same);
        EXPECT_EQ(other.isSameFileAs(file), same);
    }
}

TEST(FileIdentity, inodeDeviceNameAndSizeIdentifyAFileWithoutABirthTime) {
    const FileIdentity file{8, 42, std::nullopt, "export.xml", 1000};
    EXPECT_TRUE(file.isSameFileAs({8, 42, std::nullopt, "export.xml", 1000}));
    EXPECT_FALSE(file.isSameFileAs({8, 43, std::nullopt, "export.xml", 1000}));
    EXPECT_FALSE(file.isSameFileAs({9, 42, std::nullopt, "export.xml", 1000}));
    EXPECT_FALSE(file.isSameFileAs({8, 42, std::nullopt, "other.xml", 1000}));
    EXPECT_FALSE(file.isSameFileAs({8, 42, std::nullopt, "export.xml", 1001}));
    // An identity from a bookmark of version 1 has no size. If it has no birth time either, it is
    // the identity of no file.
    const FileIdentity old{8, 42, std::nullopt, "export.xml", std::nullopt};
    EXPECT_FALSE(old.isSameFileAs(file));
    EXPECT_FALSE(old.isSameFileAs(old));
}

TEST(FileIdentity, nameAndSizeMakeNoDifferenceToAFileWithABirthTime) {
    const FileIdentity file{8, 42, FileIdentity::Time{1000, 5}, "export.xml", 1000};
    EXPECT_TRUE(file.isSameFileAs({8, 42, FileIdentity::Time{1000, 5}, "other.xml", 1}));
}

TEST(FileIdentity, isTheSameUnderEveryNameOfTheFile) {
    const TestFolder folder;
    const QString file = folder.write(u"file"_s);
    const auto identity = FileIdentity::ofFile(bytes(file));
    ASSERT_TRUE(identity);
    ASSERT_TRUE(QFile::link(file, folder.path(u"link"_s)));
    EXPECT_TRUE(FileIdentity::ofFile(bytes(folder.path(u"link"_s)))->isSameFileAs(*identity));
    ASSERT_TRUE(QFile::rename(file, folder.path(u"renamed"_s)));
    folder.write(u"file"_s);
    EXPECT_TRUE(FileIdentity::ofFile(bytes(folder.path(u"renamed"_s)))->isSameFileAs(*identity));
    EXPECT_FALSE(FileIdentity::ofFile(bytes(file))->isSameFileAs(*identity));
}

TEST(FileIdentity, hasTheNumbersThatTheFileSystemReports) {
    const TestFolder folder;
    const QString file = folder.write(u"file"_s);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    const auto identity = FileIdentity::ofFile(bytes(file));
    ASSERT_TRUE(identity);
    EXPECT_EQ(identity->inode, status.st_ino);
    EXPECT_EQ(identity->device, status.st_dev);
    EXPECT_EQ(FileIdentity::deviceOfFolder(bytes(folder.path())), status.st_dev);
}

TEST(FileIdentity, onlyRegularFilesHaveAnIdentity) {
    const TestFolder folder;
    EXPECT_FALSE(FileIdentity::ofFile(bytes(folder.path())));
    EXPECT_FALSE(FileIdentity::ofFile(bytes(folder.path(u"missing"_s))));
    EXPECT_FALSE(FileIdentity::ofFile(bytes(folder.makeFIFO(u"fifo"_s))));
    EXPECT_FALSE(FileIdentity::ofFile(bytes(u"/dev/null"_s)));
    EXPECT_FALSE(FileIdentity::ofFile(bytes(QString())));
    EXPECT_FALSE(FileIdentity::deviceOfFolder(bytes(folder.write(u"file"_s))));
    EXPECT_FALSE(FileIdentity::deviceOfFolder(bytes(folder.path(u"missing"_s))));
}

}  // namespace

}  // namespace ambulet
