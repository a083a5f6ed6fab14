// Writes of the settings that fail, are incomplete, are interrupted by a kill, or overlap.

#include "TestFolder.h"
#include "Unprivileged.h"
#include "platform/SettingsStore.h"
#include "support/Faults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <thread>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

const QByteArray stored = "[General]\nkey=stored\nelse=there\n";

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// Runs `body` in another process, which then exits without any cleanup. Returns the process ID.
template <typename Body>
pid_t inAnotherProcess(const Body& body) {
    const pid_t child = fork();
    if (child == 0) {
        body();
        _exit(0);
    }
    return child;
}

TEST(SettingsFaults, aFailedWriteKeepsTheFileAndIsTriedAgain) {
    using Call = Fault::Call;
    const struct {
        Call call;
        bool isShort;
    } cases[] = {
        {Call::Open, false},  {Call::Write, false},  {Call::Write, true},
        {Call::Fsync, false}, {Call::Rename, false},
    };
    for (const auto& [call, isShort] : cases) {
        for (const int error : {EIO, ENOSPC, EDQUOT, EROFS, EACCES}) {
            const TestFolder folder;
            const QString file = folder.write(u"settings.ini"_s, stored);
            SettingsStore store(file);
            {
                const Fault fault(call, 1, error, isShort);
                store.setValue(u"key"_s, u"new"_s);
                EXPECT_GT(fault.failures(), 0);
                EXPECT_EQ(contentOf(file), stored);
                EXPECT_EQ(store.value(u"key"_s), u"new"_s);
                EXPECT_FALSE(store.flush());
                EXPECT_EQ(contentOf(file), stored);
                EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
            }
            EXPECT_TRUE(store.flush());
            EXPECT_EQ(contentOf(file), "[General]\nkey=new\nelse=there\n");
            EXPECT_TRUE(store.flush());
        }
    }
}

TEST(SettingsFaults, theNewFileIsKeptEvenIfSyncingTheFolderFails) {
    const TestFolder folder;
    const QString file = folder.write(u"settings.ini"_s, stored);
    SettingsStore store(file);
    const Fault fault(Fault::Call::Fsync, 2, EIO);
    store.setValue(u"key"_s, u"new"_s);
    EXPECT_EQ(fault.failures(), 1);
    EXPECT_EQ(contentOf(file), "[General]\nkey=new\nelse=there\n");
    EXPECT_TRUE(store.flush());
}

TEST(SettingsFaults, aWriteKeepsWhatAnotherProgramWritesAtTheSameTime) {
    const TestFolder folder;
    const QString file = folder.write(u"settings.ini"_s, stored);
    const BeforeOpening during(bytes(folder.path(u".settings.ini.new-XXXXXX"_s)), [&folder] {
        folder.write(u"settings.ini"_s, "[General]\nother=new\n");
    });
    SettingsStore(file).setValue(u"key"_s, u"new"_s);
    EXPECT_EQ(contentOf(file), "[General]\nother=new\nkey=new\n");
    EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
}

TEST(SettingsFaults, aCallThatASignalInterruptsIsMadeAgain) {
    for (const auto call : {Fault::Call::Read, Fault::Call::Write, Fault::Call::Flock}) {
        const TestFolder folder;
        const QString file = folder.write(u"settings.ini"_s, stored);
        folder.write(u".settings.ini.new-a1B2c3"_s);  // is removed only with the lock held
        SettingsStore store(file);
        const Fault fault(call, 1, EINTR);
        store.setValue(u"key"_s, u"new"_s);
        EXPECT_EQ(fault.failures(), 1);
        EXPECT_EQ(contentOf(file), "[General]\nkey=new\nelse=there\n");
        EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
    }
}

TEST(SettingsFaults, aValueThatCouldNotBeStoredIsStoredByTheNextWrite) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    SettingsStore store(file);
    {
        const Fault fault(Fault::Call::Fsync, 1, EIO);
        store.setValue(u"a"_s, u"1"_s);
    }
    EXPECT_EQ(filesIn(folder.path()), QStringList());
    store.setValue(u"b"_s, u"2"_s);
    EXPECT_EQ(contentOf(file), "[General]\na=1\nb=2\n");
}

// Uses the system's limit of the file size: a write that exceeds the limit is short, and the next
// write fails.
TEST(SettingsFaults, theFileIsKeptAtWhateverByteTheDiskFillsUp) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QString file = folder.write(u"settings.ini"_s, stored);
        std::signal(SIGXFSZ, SIG_IGN);
        const QByteArray fresh = "[General]\nkey=new\nelse=there\n";
        for (rlim_t limit = 0; limit <= static_cast<rlim_t>(fresh.size()); ++limit) {
            folder.write(u"settings.ini"_s, stored);
            SettingsStore store(file);
            const rlimit some{limit, RLIM_INFINITY};
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &some), 0);
            store.setValue(u"key"_s, u"new"_s);
            const rlimit any{RLIM_INFINITY, RLIM_INFINITY};
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &any), 0);
            const bool fits = limit == static_cast<rlim_t>(fresh.size());
            EXPECT_EQ(contentOf(file), fits ? fresh : stored) << limit;
            EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
        }
    }));
}

TEST(SettingsFaults, theFileStaysWholeIfAWriterIsKilledAndTheNextWriteCleansUp) {
    const TestFolder folder;
    const QString file = folder.write(u"settings.ini"_s, stored);
    const QString large(20'000, u'x');
    std::mt19937 random(1);
    for (int i = 0; i < 100; ++i) {
        const pid_t child = inAnotherProcess([&] {
            SettingsStore store(file);
            for (;;) {
                store.setValue(u"key"_s, large);
                store.setValue(u"key"_s, u"short"_s);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        SettingsStore store(file);
        EXPECT_EQ(store.value(u"else"_s), u"there"_s);
        const QVariant key = store.value(u"key"_s).value_or(QVariant());
        EXPECT_TRUE(key == u"stored"_s || key == u"short"_s || key == large) << i;
    }
    SettingsStore(file).setValue(u"key"_s, u"end"_s);
    EXPECT_EQ(contentOf(file), "[General]\nkey=end\nelse=there\n");
    EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
}

TEST(SettingsFaults, onlyTemporaryFilesOfThisFileAreCleanedUp) {
    const TestFolder folder;
    const QString file = folder.write(u"settings.ini"_s, stored);
    folder.write(u".settings.ini.new-a1B2c3"_s);
    const QStringList others = {u".other.ini.new-a1B2c3"_s, u".settings.ini.new-longer1"_s,
                                u".settings.ini.new"_s, u"settings.ini.backup"_s};
    for (const QString& other : others) {
        folder.write(other);
    }
    SettingsStore(file).setValue(u"key"_s, u"value"_s);
    for (const QString& other : others) {
        EXPECT_TRUE(QFileInfo::exists(folder.path(other))) << other.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(folder.path(u".settings.ini.new-a1B2c3"_s)));
}

TEST(SettingsFaults, eightProcessesThatWriteAtTheSameTimeLoseNoValue) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    std::vector<pid_t> children;
    for (int writer = 0; writer < 8; ++writer) {
        children.push_back(inAnotherProcess([&] {
            SettingsStore store(file);
            for (int i = 0; i < 30; ++i) {
                store.setValue(u"w%1v%2"_s.arg(writer).arg(i), u"%1"_s.arg(i));
            }
        }));
    }
    for (const pid_t child : children) {
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
    }
    SettingsStore store(file);
    for (int writer = 0; writer < 8; ++writer) {
        for (int i = 0; i < 30; ++i) {
            EXPECT_EQ(store.value(u"w%1v%2"_s.arg(writer).arg(i)), u"%1"_s.arg(i)) << writer;
        }
    }
    EXPECT_EQ(filesIn(folder.path()), QStringList(u"settings.ini"_s));
}

TEST(SettingsFaults, processesThatCreateTheFolderAtTheSameTimeLoseNoValue) {
    for (int round = 0; round < 40; ++round) {
        const TestFolder folder;
        const QString file = folder.path(u"a/b/c/settings.ini"_s);
        std::vector<pid_t> children;
        for (int writer = 0; writer < 8; ++writer) {
            children.push_back(inAnotherProcess(
                [&] { SettingsStore(file).setValue(u"w%1"_s.arg(writer), u"1"_s); }));
        }
        for (const pid_t child : children) {
            ASSERT_EQ(waitpid(child, nullptr, 0), child);
        }
        for (int writer = 0; writer < 8; ++writer) {
            EXPECT_EQ(SettingsStore(file).value(u"w%1"_s.arg(writer)), u"1"_s);
        }
    }
}

TEST(SettingsFaults, aLockThatIsNeverReleasedDoesNotPreventAWrite) {
    const TestFolder folder;
    const int held = ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    const QString file = folder.path(u"settings.ini"_s);
    const QString temporary = folder.write(u".settings.ini.new-a1B2c3"_s);
    SettingsStore store(file);
    store.setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(contentOf(file), "[General]\nkey=value\n");
    EXPECT_TRUE(QFileInfo::exists(temporary)) << "the holder of the lock may be writing it";

    int tries = 0;
    const BeforeLocking count([&tries] { ++tries; });
    store.setValue(u"key"_s, u"other"_s);
    EXPECT_EQ(contentOf(file), "[General]\nkey=other\n");
    EXPECT_EQ(tries, 1) << "the second write does not wait";
    ::flock(held, LOCK_UN);
    store.setValue(u"key"_s, u"third"_s);
    EXPECT_FALSE(QFileInfo::exists(temporary)) << "the lock is taken when it is free";

    ASSERT_EQ(::flock(held, LOCK_EX | LOCK_NB), 0);
    tries = 0;
    store.setValue(u"key"_s, u"last"_s);
    EXPECT_GT(tries, 1) << "a write after that waits again";
    ::close(held);
}

TEST(SettingsFaults, aFileWithTheNameOfALockFileIsIgnored) {
    const QByteArray foreign = "12345\nother-program\nother-machine\n";
    for (const QByteArray& content : {QByteArray(), foreign}) {
        const TestFolder folder;
        folder.write(u"settings.ini.lock"_s, content);
        SettingsStore(folder.path(u"settings.ini"_s)).setValue(u"key"_s, u"value"_s);
        EXPECT_EQ(contentOf(folder.path(u"settings.ini"_s)), "[General]\nkey=value\n");
        EXPECT_EQ(contentOf(folder.path(u"settings.ini.lock"_s)), content);
    }
    const TestFolder folder;
    folder.makeFIFO(u"settings.ini.lock"_s);
    SettingsStore(folder.path(u"settings.ini"_s)).setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(contentOf(folder.path(u"settings.ini"_s)), "[General]\nkey=value\n");
}

TEST(SettingsFaults, aFileOverOneMegabyteIsNeitherReadNorWritten) {
    const TestFolder folder;
    const QByteArray start = "[General]\nkey=stored\n;";
    const QByteArray fits = start + QByteArray(1'000'000 - start.size() - 1, 'x') + '\n';
    const QString file = folder.write(u"settings.ini"_s, fits);
    EXPECT_EQ(SettingsStore(file).value(u"key"_s), u"stored"_s);
    SettingsStore full(file);
    full.setValue(u"other"_s, u"value"_s);
    EXPECT_EQ(contentOf(file), fits);
    EXPECT_EQ(full.value(u"other"_s), u"value"_s);

    const QByteArray large = fits + '\n';
    folder.write(u"settings.ini"_s, large);
    SettingsStore store(file);
    EXPECT_EQ(store.value(u"key"_s), std::nullopt);
    store.setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(store.value(u"key"_s), u"value"_s);
    EXPECT_EQ(contentOf(file), large);
}

}  // namespace

}  // namespace ambulet
