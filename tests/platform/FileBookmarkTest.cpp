#include "platform/FileBookmark.h"

#include "TestFolder.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <random>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// A home folder of the test's own, whose usual folders are the usual ones.
class FileBookmarkTest : public testing::Test {
  protected:
    static QByteArray bookmarkOf(const QString& path) {
        const std::optional<QByteArray> bookmark = FileBookmark::make({path});
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
        EXPECT_EQ(resolved->file.path, path);
        EXPECT_EQ(resolved->stale, stale);
    }

    void expectFoundAt(const QString& name) const { expectResolved(_folder.path(name), true); }

    TestFolder _folder;
    const ScopedVariable _home{"HOME", _folder.makeFolder(u"home"_s).toStdString()};
    // Not below the home folder, so that only the search of the usual folders finds what is there.
    const QString _path = _folder.write(u"disk/exports/apple/export.xml"_s);
    QByteArray _bookmark = bookmarkOf(_path);
};

TEST_F(FileBookmarkTest, theSameFileAtItsPathIsNotStale) {
    expectResolved(_path, false);
}

TEST_F(FileBookmarkTest, aFileWithNewContentIsTheSameFile) {
    _folder.write(u"disk/exports/apple/export.xml"_s, "other content");
    expectResolved(_path, false);
}

TEST_F(FileBookmarkTest, anotherFileAtThePathIsTakenAndStale) {
    const QString other = _folder.write(u"other"_s, "other");
    moveTo(u"disk/exports/apple/moved.xml"_s);
    ASSERT_TRUE(QFile::rename(other, _path));
    expectResolved(_path, true);
}

TEST_F(FileBookmarkTest, aRenamedFileIsFoundAndStale) {
    moveTo(u"disk/exports/apple/renamed.xml"_s);
    expectFoundAt(u"disk/exports/apple/renamed.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedBelowItsFolderIsFound) {
    moveTo(u"disk/exports/apple/old/export.xml"_s);
    expectFoundAt(u"disk/exports/apple/old/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToTheFolderAroundItsOwnIsFound) {
    moveTo(u"disk/exports/export.xml"_s);
    expectFoundAt(u"disk/exports/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToAFolderBesideItsOwnIsFound) {
    moveTo(u"disk/exports/2024/export.xml"_s);
    expectFoundAt(u"disk/exports/2024/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileWhoseFolderWasRenamedIsFound) {
    ASSERT_TRUE(QDir().rename(_folder.path(u"disk/exports/apple"_s),
                              _folder.path(u"disk/exports/health"_s)));
    expectFoundAt(u"disk/exports/health/export.xml"_s);
}

TEST_F(FileBookmarkTest, aFileMovedToTheHomeFolderOrBelowIsFound) {
    for (const QString& place :
         {u"home/Downloads/export.xml"_s, u"home/Documents/health/export.xml"_s,
          u"home/Desktop/export.xml"_s, u"home/export.xml"_s, u"home/health/2024/e.xml"_s}) {
        moveTo(place);
        expectFoundAt(place);
        ASSERT_TRUE(QDir().rename(_folder.path(place), _path));
    }
}

TEST_F(FileBookmarkTest, aFileMovedOutOfReachIsNotFound) {
    moveTo(u"elsewhere/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, aDeletedFileResolvesToNothing) {
    ASSERT_TRUE(QFile::remove(_path));
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QDir(_folder.path(u"disk"_s)).removeRecursively());
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, aNewBookmarkOfWhatAStaleOneLedToIsNotStale) {
    moveTo(u"disk/exports/renamed.xml"_s);
    const auto resolved = FileBookmark::resolve(_bookmark);
    ASSERT_TRUE(resolved);
    _bookmark = FileBookmark::make(resolved->file).value_or(QByteArray());
    expectResolved(_folder.path(u"disk/exports/renamed.xml"_s), false);
}

TEST_F(FileBookmarkTest, whatIsNoRegularFileAtThePathIsNotTaken) {
    ASSERT_TRUE(QFile::remove(_path));
    _folder.makeFIFO(u"disk/exports/apple/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QFile::remove(_path));
    _folder.makeFolder(u"disk/exports/apple/export.xml"_s);
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
}

TEST_F(FileBookmarkTest, anyNameComesBack) {
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

TEST_F(FileBookmarkTest, aLinkStandsForTheFileItLeadsTo) {
    const QString link = _folder.path(u"link.xml"_s);
    ASSERT_TRUE(QFile::link(_path, link));
    _bookmark = bookmarkOf(link);
    expectResolved(link, false);
    ASSERT_TRUE(QFile::remove(link));
    ASSERT_TRUE(QFile::link(_folder.write(u"other.xml"_s), link));
    expectResolved(link, true);
}

TEST_F(FileBookmarkTest, thereIsNoneOfWhatIsNoRegularFile) {
    EXPECT_FALSE(FileBookmark::make({_folder.path()}));
    EXPECT_FALSE(FileBookmark::make({_folder.path(u"missing"_s)}));
    EXPECT_FALSE(FileBookmark::make({_folder.makeFIFO(u"fifo"_s)}));
    EXPECT_FALSE(FileBookmark::make({u"/dev/zero"_s}));
    EXPECT_FALSE(FileBookmark::make({QString()}));
}

TEST_F(FileBookmarkTest, dataThatIsCutOffOrTooLongResolvesToNothing) {
    for (qsizetype size = 0; size < _bookmark.size(); ++size) {
        EXPECT_FALSE(FileBookmark::resolve(_bookmark.first(size))) << size;
    }
    EXPECT_FALSE(FileBookmark::resolve(_bookmark + '\0'));
}

TEST_F(FileBookmarkTest, dataOfAnotherVersionResolvesToNothing) {
    constexpr qsizetype version = 4;  // its place in the record, after the four bytes of signature
    ASSERT_EQ(_bookmark[version], '\1');
    for (const char other : {'\0', '\2', '\xff'}) {
        _bookmark[version] = other;
        EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    }
}

TEST_F(FileBookmarkTest, dataWithARelativePathResolvesToNothing) {
    constexpr qsizetype path = 9;  // its place in the record, after signature, version and length
    ASSERT_EQ(_bookmark[path], '/');
    _bookmark[path] = 'x';
    _folder.write(u"current/x"_s + _path.sliced(1));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(_folder.path(u"current"_s)));
    EXPECT_FALSE(FileBookmark::resolve(_bookmark));
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(FileBookmarkTest, dataThatIsNoBookmarkResolvesToNothing) {
    for (const QByteArray& data : {QByteArray(), QByteArray("bookmark"), QByteArray(1000, '\xff'),
                                   QByteArray("book\0\0\0\0mark\0\0\0\0", 16)}) {
        EXPECT_FALSE(FileBookmark::resolve(data));
    }
}

TEST_F(FileBookmarkTest, aDamagedBookmarkLeadsToTheFileOrNowhere) {
    std::mt19937 random(1);  // the same damage in every run
    for (qsizetype at = 0; at < _bookmark.size(); ++at) {
        QByteArray damaged = _bookmark;
        damaged[at] = static_cast<char>(damaged[at] ^ static_cast<char>(1 + random() % 255));
        const auto resolved = FileBookmark::resolve(damaged);
        EXPECT_TRUE(!resolved || resolved->file.path == _path) << at;
    }
}

}  // namespace

}  // namespace ambulet
