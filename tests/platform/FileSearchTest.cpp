#include "platform/FileSearch.h"

#include "TestFolder.h"
#include "Unprivileged.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace ambulet {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Limits that no test reaches.
constexpr SearchBounds far{.entries = 1'000'000, .time = 1h};

class FileSearch : public testing::Test {
  protected:
    // Creates a file and returns its identity. If there is an `otherName`, also creates a hard link
    // of that name to the file.
    FileIdentity identityOf(const QString& name, const QString& otherName = {}) const {
        const QString file = _folder.write(name);
        if (!otherName.isEmpty()) {
            EXPECT_TRUE(QDir().mkpath(QFileInfo(_folder.path(otherName)).path()));
            EXPECT_EQ(::link(QFile::encodeName(file).constData(),
                             QFile::encodeName(_folder.path(otherName)).constData()),
                      0);
        }
        return *FileIdentity::ofFile(bytes(file));
    }

    std::optional<QString> find(const FileIdentity& identity, const QStringList& folders,
                                const SearchBounds& bounds = far) const {
        return find(identity, folders, *FileIdentity::deviceOfFolder(bytes(_folder.path())),
                    bounds);
    }

    static std::optional<QString> find(const FileIdentity& identity, const QStringList& folders,
                                       std::uint64_t device, const SearchBounds& bounds) {
        std::vector<std::string> paths;
        for (const QString& folder : folders) {
            paths.push_back(bytes(folder));
        }
        const auto found = findFile(identity, paths, device, bounds);
        return found ? std::optional(QFile::decodeName(found->c_str())) : std::nullopt;
    }

    TestFolder _folder;
};

TEST_F(FileSearch, findsAFileAtAnyDepth) {
    const FileIdentity identity = identityOf(u"a/b/c/d/e/file"_s);
    EXPECT_EQ(find(identity, {_folder.path()}), _folder.path(u"a/b/c/d/e/file"_s));
}

TEST_F(FileSearch, findsTheFileAtTheLeastDepthFirst) {
    const FileIdentity identity = identityOf(u"first/deep/down/file"_s, u"second/file"_s);
    const QStringList folders = {_folder.path(u"first"_s), _folder.path(u"second"_s)};
    EXPECT_EQ(find(identity, folders), _folder.path(u"second/file"_s));
}

TEST_F(FileSearch, findsNothingIfTheFileIsNotThere) {
    const FileIdentity identity = identityOf(u"elsewhere/file"_s);
    _folder.write(u"here/file"_s);
    EXPECT_EQ(find(identity, {_folder.path(u"here"_s), _folder.path(u"missing"_s), {}}),
              std::nullopt);
}

TEST_F(FileSearch, doesNotEnterHiddenFoldersOrLinks) {
    const FileIdentity identity = identityOf(u"outside/file"_s, u"root/.hidden/file"_s);
    ASSERT_TRUE(QFile::link(_folder.path(u"outside"_s), _folder.path(u"root/link"_s)));
    ASSERT_TRUE(QFile::link(_folder.path(u"root"_s), _folder.path(u"root/loop"_s)));
    EXPECT_EQ(find(identity, {_folder.path(u"root"_s)}), std::nullopt);
}

TEST_F(FileSearch, entersAGivenFolderEvenIfItIsHiddenOrALink) {
    const FileIdentity identity = identityOf(u".hidden/file"_s);
    ASSERT_TRUE(QFile::link(_folder.path(u".hidden"_s), _folder.path(u"link"_s)));
    EXPECT_EQ(find(identity, {_folder.path(u".hidden"_s)}), _folder.path(u".hidden/file"_s));
    EXPECT_EQ(find(identity, {_folder.path(u"link"_s)}), _folder.path(u"link/file"_s));
}

TEST_F(FileSearch, doesNotEnterOtherFileSystems) {
    const FileIdentity identity = identityOf(u"file"_s);
    const std::uint64_t other = *FileIdentity::deviceOfFolder(bytes(_folder.path())) + 1;
    EXPECT_EQ(find(identity, {_folder.path()}, other, far), std::nullopt);
}

TEST_F(FileSearch, endsAtTheLimitOfEntries) {
    for (int i = 0; i < 10; ++i) {
        _folder.write(u"%1"_s.arg(i));
    }
    // The ten files, the folder "sub" and the file in it are twelve entries.
    const FileIdentity identity = identityOf(u"sub/file"_s);
    EXPECT_EQ(find(identity, {_folder.path()}, {.entries = 12, .time = 1h}),
              _folder.path(u"sub/file"_s));
    // A folder that is given twice is searched once.
    EXPECT_EQ(find(identity, {_folder.path(), _folder.path()}, {.entries = 12, .time = 1h}),
              _folder.path(u"sub/file"_s));
    EXPECT_EQ(find(identity, {_folder.path()}, {.entries = 11, .time = 1h}), std::nullopt);
}

TEST_F(FileSearch, endsAtTheTimeLimit) {
    const FileIdentity identity = identityOf(u"file"_s);
    EXPECT_EQ(find(identity, {_folder.path()}, {.entries = 1'000'000, .time = -1ms}), std::nullopt);
}

TEST_F(FileSearch, skipsUnreadableFolders) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const FileIdentity identity = *FileIdentity::ofFile(bytes(folder.write(u"b/c/file"_s)));
        setMode(folder.makeFolder(u"a"_s), 0000);
        EXPECT_EQ(find(identity, {folder.path(u"a"_s), folder.path()},
                       *FileIdentity::deviceOfFolder(bytes(folder.path())), far),
                  folder.path(u"b/c/file"_s));
        setMode(folder.path(u"a"_s), 0700);
    }));
}

TEST_F(FileSearch, skipsFIFOsAndFindsFilesWhoseNamesAreNotUTF8) {
    _folder.makeFIFO(u"fifo"_s);
    const QByteArray name = QFile::encodeName(_folder.path()) + "/\xff\xfe";
    const int file = ::creat(name.constData(), 0600);
    ASSERT_GE(file, 0);
    ::close(file);
    const FileIdentity identity = identityOf(u"sub/file"_s);
    EXPECT_EQ(find(identity, {_folder.path()}), _folder.path(u"sub/file"_s));
    const auto odd = findFile(*FileIdentity::ofFile(name.toStdString()), {bytes(_folder.path())},
                              *FileIdentity::deviceOfFolder(bytes(_folder.path())), far);
    EXPECT_EQ(odd, name.toStdString());
    ::unlink(name.constData());
}

}  // namespace

}  // namespace ambulet
