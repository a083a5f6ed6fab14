#include "platform/WholeFile.h"

#include "TestFolder.h"
#include "support/Faults.h"

#include <QDir>
#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace ambulet {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::size_t limit = 100;

class WholeFileTest : public testing::Test {
  protected:
    WholeFile file() const { return WholeFile(_path.toStdString()); }
    void write(const QByteArray& content) const { _folder.write(u"file"_s, content); }
    QStringList names() const {
        return QDir(_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    TestFolder _folder;
    const QString _path = _folder.path(u"file"_s);
};

TEST_F(WholeFileTest, theFileThatWasReadIsReplaced) {
    write("old");
    WholeFile whole = file();
    EXPECT_EQ(whole.read(limit), "old");
    EXPECT_EQ(whole.replace("new"), WholeFile::Outcome::Replaced);
    EXPECT_EQ(contentOf(_path), "new");
    EXPECT_EQ(names(), QStringList(u"file"_s));
}

TEST_F(WholeFileTest, aFileThatHasChangedSinceItWasReadIsNotReplaced) {
    write("old");
    WholeFile whole = file();
    whole.read(limit);
    write("another");
    EXPECT_EQ(whole.replace("new"), WholeFile::Outcome::Changed);
    EXPECT_EQ(contentOf(_path), "another");
    EXPECT_EQ(names(), QStringList(u"file"_s));
}

TEST_F(WholeFileTest, aFileThatWasCreatedSinceTheReadIsNotReplaced) {
    WholeFile whole = file();
    EXPECT_EQ(whole.read(limit), "");
    write("another");
    EXPECT_EQ(whole.replace("new"), WholeFile::Outcome::Changed);
    EXPECT_EQ(contentOf(_path), "another");
}

TEST_F(WholeFileTest, aWriterWaitsForTheLockAsLongAsItsHolderChangesTheFile) {
    const int held = ::open(QFile::encodeName(_folder.path()).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    const auto end = std::chrono::steady_clock::now() + 1s;
    QByteArray content;
    const BeforeLocking change([&] {
        if (std::chrono::steady_clock::now() < end) {
            write(content += '.');
        } else {
            ::close(held);
        }
    });
    EXPECT_TRUE(WholeFile::Lock(file(), 500ms).isHeld());
}

TEST_F(WholeFileTest, aWriterDoesNotWaitForeverForALockWhoseHolderChangesTheFile) {
    const int held = ::open(QFile::encodeName(_folder.path()).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    QByteArray content;
    const BeforeLocking change([&] { write(content += '.'); });
    ::alarm(60);  // ends the process if the waiting does not end
    EXPECT_FALSE(WholeFile::Lock(file(), 500ms).isHeld());
    ::alarm(0);
    ::close(held);
}

TEST_F(WholeFileTest, aDeviceIsNotOpened) {
    const OpenLog log;
    EXPECT_EQ(WholeFile("/dev/null").read(limit), std::nullopt);
    EXPECT_EQ(log.paths(), std::vector<std::string>());
}

TEST_F(WholeFileTest, aFileThatBecomesAFIFOBeforeItIsOpenedDoesNotBlock) {
    write("old");
    const BeforeOpening replaced(_path.toStdString(), [this] {
        QFile::remove(_path);
        _folder.makeFIFO(u"file"_s);
    });
    ::alarm(60);  // ends the process if opening blocks
    EXPECT_EQ(file().read(limit), std::nullopt);
    ::alarm(0);
    EXPECT_FALSE(QFileInfo(_path).isFile());
}

TEST_F(WholeFileTest, aFileThatWasDeletedSinceItWasReadIsNotCreatedAgain) {
    write("old");
    WholeFile whole = file();
    whole.read(limit);
    QFile::remove(_path);
    EXPECT_NE(whole.replace("new"), WholeFile::Outcome::Replaced);
    EXPECT_EQ(names(), QStringList());
}

}  // namespace

}  // namespace ambulet
