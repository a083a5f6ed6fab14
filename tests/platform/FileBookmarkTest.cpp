#include "platform/FileBookmark.h"

#include "TestFolder.h"
#include "support/Environment.h"
#include "support/Faults.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <functional>
#include <random>
#include <unistd.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// A temporary home folder, and outside it a file and its bookmark.
class FileBookmarkTest : public testing::Test {
  protected:
    static QByteArray bookmarkOf(const QString& path) {
        const std::optional<QByteArray> bookmark = FileBookmark::make(path);
        EXPECT_TRUE(bookmark);
        return bookmark.value_or(QByteArray());
    }

    void moveTo(const QString& name) const {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(_folder.path(name)).path()));
        EXPECT_TRUE(QDir().rename(_path, _folder.path(name)));
    }

    void expectResolved(const QString& path, bool stale) const {
        const auto resolved = FileBookmark::resolve(_bookmark);
        ASSERT_TRUE(resolved);
        EXPECT_EQ(QFile::decodeName(resolved->file.path.c_str()), path);
        EXPECT_EQ(resolved->stale, stale);
    }

    void expectFoundAt(const QString& name) const { expectResolved(_folder.path(name), true); }

    TestFolder _folder;
    const ScopedVariable _home{"HOME", _folder.makeFolder(u"home"_s).toStdString()};
    // Outside the home folder, so that a file moved to the home folder is found only because the
    // usual folders are searched.
    const QString _path = _folder.write(u"disk/exports/apple/export.xml"_s);
    QByteArray _bookmark = bookmarkOf(_path);
};

TEST_F(FileBookmarkTest, aBookmarkOfAnUnmovedFileIsNotStale) {
    expectResolved(_path, false);
}

TEST_F(FileBookmarkTest, aFileWithNewContentIsStillTheSameFile) {
    _folder.write(u"disk/exports/apple/export.xml"_s, "other content");
    expectResolved(_path, false);
}

TEST_F(FileBookmarkTest, anotherFileAtThePathIsFoundAndTheBookmarkIsStale) {
    const QString other = _folder.write(u"other"_s, "other");
    moveTo(u"disk/exports/apple/moved.xml"_s);
    ASSERT_TRUE(QFile::rename(other, _path));
    expectResolved(_path, true);
}

TEST_F(FileBookmarkTest, aRenamedFileIsFoundAndTheBookmarkIsStale) {
    moveTo(u"disk/exports/apple/renamed.xml"_s);
    expectFoundAt(u"disk/exports/apple/renamed.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedIntoASubfolderIsFound) {
    moveTo(u"disk/exports/apple/old/export.xml"_s);
    expectFoundAt(u"disk/exports/apple/old/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToTheParentFolderIsFound) {
    moveTo(u"disk/exports/export.xml"_s);
    expectFoundAt(u"disk/exports/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToASiblingFolderIsFound) {
    moveTo(u"disk/exports/2024/export.xml"_s);
    expectFoundAt(u"disk/exports/2024/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileWhoseFolderWasRenamedIsFound) {
    ASSERT_TRUE(QDir().rename(_folder.path(u"disk/exports/apple"_s),
                              _folder.path(u"disk/exports/health"_s)));
    expectFoundAt(u"disk/exports/health/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToTheHomeFolderOrAFolderInItIsFound) {
    for (const QString& place :
         {u"home/Downloads/export.xml"_s, u"home/Documents/health/export.xml"_s,
          u"home/Desktop/export.xml"_s, u"home/export.xml"_s, u"home/health/2024/e.xml"_s}) {
        moveTo(place);
        expectFoundAt(place);
        ASSERT_TRUE(QDir().rename(_folder.path(place), _path));
    }
}

TEST_F(FileBookmarkTest, aFileMovedToAFolderThatIsNotSearchedIsNotFound) {
    moveTo(u"elsewhere/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, aDeletedFileResolvesToNothing) {
    ASSERT_TRUE(QFile::remove(_path));
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QDir(_folder.path(u"disk"_s)).removeRecursively());
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, aBookmarkMadeAgainAfterAMoveIsNotStale) {
    moveTo(u"disk/exports/renamed.xml"_s);
    const auto resolved = FileBookmark::resolve(_bookmark);
    ASSERT_TRUE(resolved);
    _bookmark = FileBookmark::make(resolved->file).value_or(QByteArray());
    expectResolved(_folder.path(u"disk/exports/renamed.xml"_s), false);
}

TEST_F(FileBookmarkTest, onlyARegularFileAtThePathIsFound) {
    ASSERT_TRUE(QFile::remove(_path));
    _folder.makeFIFO(u"disk/exports/apple/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QFile::remove(_path));
    _folder.makeFolder(u"disk/exports/apple/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, namesWithUnusualCharactersAreKept) {
    for (const QString& name : {u"Zoë/走步/😀.xml"_s, u" a, b%20\n\"c\".xml"_s}) {
        const QString path = _folder.write(name);
        _bookmark = bookmarkOf(path);
        expectResolved(path, false);
    }
}

TEST_F(FileBookmarkTest, aRelativePathIsMadeAbsolute) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(_folder.path(u"disk"_s)));
    _bookmark = bookmarkOf(u"exports/apple/export.xml"_s);
    ASSERT_TRUE(QDir::setCurrent(before));
    expectResolved(_path, false);
}

TEST_F(FileBookmarkTest, aBookmarkOfALinkResolvesToTheLinkAndIsStaleIfItsTargetChanges) {
    const QString link = _folder.path(u"link.xml"_s);
    ASSERT_TRUE(QFile::link(_path, link));
    _bookmark = bookmarkOf(link);
    expectResolved(link, false);
    ASSERT_TRUE(QFile::remove(link));
    ASSERT_TRUE(QFile::link(_folder.write(u"other.xml"_s), link));
    expectResolved(link, true);
}

TEST_F(FileBookmarkTest, onlyRegularFilesHaveBookmarks) {
    EXPECT_FALSE(FileBookmark::make(_folder.path()));
    EXPECT_FALSE(FileBookmark::make(_folder.path(u"missing"_s)));
    EXPECT_FALSE(FileBookmark::make(_folder.makeFIFO(u"fifo"_s)));
    EXPECT_FALSE(FileBookmark::make(u"/dev/zero"_s));
    EXPECT_FALSE(FileBookmark::make(QString()));
}

TEST_F(FileBookmarkTest, aNameThatIsNotUTF8IsKeptByteForByte) {
    const std::string name = FileURL(_folder.path(u"disk/exports/apple/"_s)).path + "\xff\xfe.xml";
    ASSERT_EQ(::rename(FileURL(_path).path.c_str(), name.c_str()), 0);
    const auto found = FileBookmark::resolve(_bookmark);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->file.path, name);
    _bookmark = FileBookmark::make(found->file).value_or(QByteArray());
    const auto again = FileBookmark::resolve(_bookmark);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->file.path, name);
    EXPECT_FALSE(again->stale);
}

// The size is the last eight bytes of a bookmark of version 2. Version 1 has no size, and is
// otherwise the same.
TEST_F(FileBookmarkTest, aBookmarkOfVersion1FindsItsFile) {
    _bookmark[4] = '\1';
    _bookmark.chop(8);
    expectResolved(_path, false);
    moveTo(u"disk/exports/apple/renamed.xml"_s);
    expectFoundAt(u"disk/exports/apple/renamed.xml"_s);
}

TEST_F(FileBookmarkTest, aRenamedFileIsFoundAmongTenThousandOtherFiles) {
    for (int i = 0; i < 10'000; ++i) {
        const int file =
            ::creat(FileURL(_folder.path(u"disk/exports/apple/n%1"_s.arg(i))).path.c_str(), 0600);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    moveTo(u"disk/exports/apple/renamed.xml"_s);
    expectFoundAt(u"disk/exports/apple/renamed.xml"_s);
}

// Each case: what happens to the file, and what its bookmark then resolves to.
TEST_F(FileBookmarkTest, aBookmarkResolvesAsListedAfterEachChangeOfItsFile) {
    const QString moved = u"disk/exports/moved.xml"_s;
    const auto copyBack = [&] {  // makes another file with the same path, size and content
        ASSERT_TRUE(QFile::copy(_path, _folder.path(moved)));
        ASSERT_TRUE(QFile::remove(_path));
        ASSERT_TRUE(QFile::rename(_folder.path(moved), _path));
    };
    const struct {
        const char* happened;
        bool keepsBirthTimes;
        std::function<void()> happens;
        std::optional<QString> found;  // empty if the bookmark does not resolve
        bool stale;
    } cases[] = {
        {"nothing", true, [] {}, _path, false},
        {"new content", true, [&] { _folder.write(u"disk/exports/apple/export.xml"_s, "longer"); },
         _path, false},
        {"renamed", true, [&] { moveTo(moved); }, _folder.path(moved), true},
        {"moved, and a newer export put in its place", true,
         [&] {
             moveTo(moved);
             _folder.write(u"disk/exports/apple/export.xml"_s, "newer");
         },
         _path, true},
        {"replaced by a copy", true, copyBack, _path, true},
        {"deleted", true, [&] { QFile::remove(_path); }, std::nullopt, false},
        {"deleted, and a folder put in its place", true,
         [&] {
             QFile::remove(_path);
             _folder.makeFolder(u"disk/exports/apple/export.xml"_s);
         },
         std::nullopt, false},
        {"moved, and a link to the file put in its place", true,
         [&] {
             moveTo(moved);
             QFile::link(_folder.path(moved), _path);
         },
         _path, false},
        {"deleted, and a link to nothing put in its place", true,
         [&] {
             QFile::remove(_path);
             QFile::link(_folder.path(u"missing"_s), _path);
         },
         std::nullopt, false},
        // Without birth times
        {"nothing", false, [] {}, _path, false},
        {"new content of another size", false,
         [&] { _folder.write(u"disk/exports/apple/export.xml"_s, "longer"); }, _path, true},
        {"moved, with the same name", false, [&] { moveTo(u"disk/exports/export.xml"_s); },
         _folder.path(u"disk/exports/export.xml"_s), true},
        {"renamed", false, [&] { moveTo(moved); }, std::nullopt, false},
        {"moved and grown", false,
         [&] {
             moveTo(u"disk/exports/export.xml"_s);
             _folder.write(u"disk/exports/export.xml"_s, "longer");
         },
         std::nullopt, false},
    };
    for (const auto& [happened, keepsBirthTimes, happens, found, stale] : cases) {
        SCOPED_TRACE(std::string(happened) + (keepsBirthTimes ? "" : ", without birth times"));
        ASSERT_TRUE(QDir(_folder.path(u"disk"_s)).removeRecursively());
        _folder.write(u"disk/exports/apple/export.xml"_s);
        std::optional<NoBirthTimes> noBirthTimes;
        if (!keepsBirthTimes) {
            noBirthTimes.emplace();
        }
        _bookmark = bookmarkOf(_path);
        happens();
        if (found) {
            expectResolved(*found, stale);
        } else {
            EXPECT_FALSE(FileBookmark::resolve(_bookmark));
        }
    }
}

// A restart can change the device numbers.
TEST_F(FileBookmarkTest, theFileAtItsPathIsFoundEvenIfTheDeviceNumberHasChanged) {
    for (const bool keepsBirthTimes : {true, false}) {
        std::optional<NoBirthTimes> noBirthTimes;
        if (!keepsBirthTimes) {
            noBirthTimes.emplace();
        }
        _bookmark = bookmarkOf(_path);
        const OtherDevices remounted;
        expectResolved(_path, !keepsBirthTimes);
    }
}

// A path from a document portal is in a folder that is not searched, on a file system without birth
// times.
TEST_F(FileBookmarkTest, aFileInADocumentPortalIsFoundAtItsPath) {
    const NoBirthTimes fuse;
    const QString path = _folder.write(u"run/user/1000/doc/1a2b3c4d/export.xml"_s);
    _bookmark = bookmarkOf(path);
    expectResolved(path, false);
    const OtherDevices afterARestart;
    expectResolved(path, true);
}

TEST_F(FileBookmarkTest, truncatedOrTooLongDataResolvesToNothing) {
    for (qsizetype size = 0; size < _bookmark.size(); ++size) {
        EXPECT_FALSE(FileBookmark::resolve(_bookmark.first(size))) << size;
        EXPECT_FALSE(FileBookmark::isBookmark(_bookmark.first(size))) << size;
    }
    EXPECT_TRUE(FileBookmark::isBookmark(_bookmark));
    EXPECT_FALSE(FileBookmark::resolve(_bookmark + '\0'));
}

TEST_F(FileBookmarkTest, dataWithAnotherSignatureResolvesToNothing) {
    _bookmark[0] = 'B';
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    EXPECT_FALSE(FileBookmark::isBookmark(_bookmark));
}

TEST_F(FileBookmarkTest, dataOfAnUnknownVersionResolvesToNothing) {
    constexpr qsizetype version = 4;  // offset in the record, after the signature
    ASSERT_EQ(_bookmark[version], '\2');
    for (const char other : {'\0', '\3', '\xff'}) {
        _bookmark[version] = other;
        EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    }
}

TEST_F(FileBookmarkTest, dataWithARelativePathResolvesToNothing) {
    constexpr qsizetype path = 9;  // offset in the record, after signature, version and length
    ASSERT_EQ(_bookmark[path], '/');
    _bookmark[path] = 'x';
    _folder.write(u"current/x"_s + _path.sliced(1));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(_folder.path(u"current"_s)));
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(FileBookmarkTest, dataThatIsNotABookmarkResolvesToNothing) {
    for (const QByteArray& data : {QByteArray(), QByteArray("bookmark"), QByteArray(1000, '\xff'),
                                   QByteArray("book\0\0\0\0mark\0\0\0\0", 16)}) {
        EXPECT_FALSE(FileBookmark::resolve(data));
    }
}

TEST_F(FileBookmarkTest, dataWithANULInThePathResolvesToNothing) {
    const QByteArray path = QFile::encodeName(_path);
    for (const qsizetype at : {path.size(), path.lastIndexOf('/') + 1}) {
        const QByteArray withNUL = QByteArray(path).insert(at, '\0');
        QByteArray damaged = _bookmark;
        damaged.replace(path, withNUL);
        damaged[damaged.indexOf(withNUL) - 1] = static_cast<char>(withNUL.size());
        EXPECT_FALSE(FileBookmark::isBookmark(damaged));
        EXPECT_FALSE(FileBookmark::resolve(damaged));
    }
}

TEST_F(FileBookmarkTest, aDamagedBookmarkResolvesToTheFileOrToNothing) {
    std::mt19937 random(1);  // the same damage in every run
    for (qsizetype at = 0; at < _bookmark.size(); ++at) {
        QByteArray damaged = _bookmark;
        damaged[at] = static_cast<char>(damaged[at] ^ static_cast<char>(1 + random() % 255));
        const auto resolved = FileBookmark::resolve(damaged);
        EXPECT_TRUE(!resolved || resolved->file.path == FileURL(_path).path) << at;
    }
}

}  // namespace

}  // namespace ambulet
