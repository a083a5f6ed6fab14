#include "platform/SettingsStore.h"

#include "TestFolder.h"
#include "Unprivileged.h"
#include "support/Environment.h"

#include <QFileInfo>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <pwd.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <utility>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// Expects that a store at this place keeps values in memory.
void expectKeptForTheRun(const QString& place) {
    SettingsStore store(place);
    store.setValue(u"key"_s, u"value"_s);
    store.setValue(u"other"_s, QByteArray("data"));
    store.setValue(u"key"_s, u"newer"_s);
    EXPECT_EQ(store.value(u"key"_s), u"newer"_s);
    EXPECT_EQ(store.value(u"other"_s), QByteArray("data"));
    EXPECT_EQ(store.value(u"none"_s), std::nullopt);
}

// Records which files in a folder are created, get other attributes or are renamed.
class Watch {
  public:
    explicit Watch(const QString& folder) : _queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(inotify_add_watch(_queue, QFile::encodeName(folder).constData(),
                                    IN_CREATE | IN_ATTRIB | IN_MOVED_TO),
                  0);
    }
    ~Watch() { ::close(_queue); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    QList<std::pair<QString, unsigned>> changes() const {
        QList<std::pair<QString, unsigned>> found;
        std::array<char, 65536> buffer{};
        const ssize_t size = ::read(_queue, buffer.data(), buffer.size());
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* const name = buffer.data() + at + sizeof event;
            found.append({QFile::decodeName(event.len > 0 ? name : ""), event.mask});
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
        return found;
    }

  private:
    int _queue;
};

TEST(SettingsStore, onlyTheOwnerCanEverReadTheFile) {
    const mode_t before = umask(0);
    const TestFolder folder;
    const Watch watch(folder.path());
    const QString file = folder.path(u"settings.ini"_s);
    {
        SettingsStore store(file);
        for (const QString& value : {u"first"_s, u"second"_s}) {
            store.setValue(u"key"_s, value);
            EXPECT_EQ(modeOf(file), 0600U);
        }
    }
    umask(before);
    EXPECT_EQ(modeOf(file), 0600U);
    // The mode of a file with this name never changed. So the mode was right from the start.
    bool seen = false;
    for (const auto& [name, change] : watch.changes()) {
        seen = seen || name == u"settings.ini"_s;
        EXPECT_FALSE(name == u"settings.ini"_s && (change & IN_ATTRIB) != 0);
    }
    EXPECT_TRUE(seen);
}

TEST(SettingsStore, readingCreatesNoFile) {
    const TestFolder folder;
    EXPECT_EQ(SettingsStore(folder.path(u"settings.ini"_s)).value(u"key"_s), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(folder.path(u"settings.ini"_s)));
}

TEST(SettingsStore, aWriteRemovesThePermissionsOfOthers) {
    for (const unsigned mode : {0644U, 0640U, 0604U, 0666U}) {
        const TestFolder folder;
        const QString file = folder.write(u"settings.ini"_s, "[General]\nold=1\n");
        setMode(file, mode);
        SettingsStore store(file);
        store.setValue(u"key"_s, u"value"_s);
        EXPECT_EQ(modeOf(file), 0600U);
        EXPECT_EQ(store.value(u"old"_s), u"1"_s);
    }
}

TEST(SettingsStore, missingFoldersAreCreatedForTheOwnerOnly) {
    const TestFolder folder;
    SettingsStore store(folder.path(u"a/b/settings.ini"_s));
    store.setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(contentOf(folder.path(u"a/b/settings.ini"_s)), "[General]\nkey=value\n");
    EXPECT_EQ(modeOf(folder.path(u"a"_s)), 0700U);
    EXPECT_EQ(modeOf(folder.path(u"a/b"_s)), 0700U);
}

TEST(SettingsStore, everyWriteIsInTheFileAtOnce) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    SettingsStore store(file);
    store.setValue(u"a"_s, u"1"_s);
    EXPECT_EQ(contentOf(file), "[General]\na=1\n");
    store.setValue(u"a"_s, u"2"_s);
    EXPECT_EQ(contentOf(file), "[General]\na=2\n");
}

TEST(SettingsStore, aLinkToTheFileStaysALink) {
    const TestFolder folder;
    const QString file = folder.write(u"real.ini"_s, "");
    const QString link = folder.path(u"settings.ini"_s);
    ASSERT_TRUE(QFile::link(file, link));
    SettingsStore(link).setValue(u"key"_s, u"value"_s);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(file), "[General]\nkey=value\n");
}

TEST(SettingsStore, keysOfAnotherProcessAreKeptAndRead) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    SettingsStore store(file);
    store.setValue(u"ours"_s, u"1"_s);
    store.setValue(u"both"_s, u"1"_s);
    const pid_t child = fork();
    if (child == 0) {
        SettingsStore other(file);
        other.setValue(u"theirs"_s, u"a longer text"_s);
        other.setValue(u"both"_s, u"changed by them"_s);
        _exit(0);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(store.value(u"theirs"_s), u"a longer text"_s);
    EXPECT_EQ(store.value(u"both"_s), u"changed by them"_s);
    store.setValue(u"ours"_s, u"2"_s);
    EXPECT_EQ(contentOf(file),
              "[General]\nours=2\nboth=\"changed by them\"\ntheirs=\"a longer text\"\n");
}

TEST(SettingsStore, theUndamagedLinesOfAFileAreReadAndTheNextWriteKeepsThem) {
    const TestFolder folder;
    const char damaged[] = "[General]\na=1\n]]]] \0\xff\xfe no sense\n[broken\nx\n[General]\nb=2\n";
    const QString file = folder.write(u"settings.ini"_s, QByteArray(damaged, sizeof damaged - 1));
    SettingsStore store(file);
    EXPECT_EQ(store.value(u"a"_s), u"1"_s);
    EXPECT_EQ(store.value(u"b"_s), u"2"_s);
    store.setValue(u"c"_s, u"3"_s);
    const QByteArray content = contentOf(file);
    for (const char* line : {"a=1\n", "b=2\n", "c=3\n"}) {
        EXPECT_TRUE(content.contains(line)) << content.toStdString();
    }
    EXPECT_EQ(SettingsStore(folder.write(u"mended.ini"_s, content)).value(u"c"_s), u"3"_s);
}

TEST(SettingsStore, aFileOfGarbageReadsAsEmptyAndCanBeWritten) {
    const TestFolder folder;
    QByteArray garbage("\x89PNG\r\n\x1a\n");
    for (int i = 0; i < 10'000; ++i) {
        garbage.append(static_cast<char>(i * 7919 >> 3));
    }
    const QString file = folder.write(u"settings.ini"_s, garbage);
    SettingsStore store(file);
    EXPECT_EQ(store.value(u"key"_s), std::nullopt);
    store.setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(SettingsStore(folder.write(u"copy.ini"_s, contentOf(file))).value(u"key"_s),
              u"value"_s);
}

TEST(SettingsStore, anUnquotedTextWithCommasIsReadAsText) {
    const TestFolder folder;
    SettingsStore store(folder.write(u"settings.ini"_s, "[General]\na=/home/a,b,,c.xml\nb=2,5\n"));
    EXPECT_EQ(store.value(u"a"_s), u"/home/a,b,,c.xml"_s);
    EXPECT_EQ(store.value(u"b"_s), u"2,5"_s);
}

TEST(SettingsStore, aFolderAtTheFilesPathIsKeptAndValuesStayInMemory) {
    const TestFolder folder;
    expectKeptForTheRun(folder.makeFolder(u"settings.ini"_s));
    EXPECT_TRUE(QDir(folder.path(u"settings.ini"_s)).isEmpty());
}

TEST(SettingsStore, aFIFOAtTheFilesPathDoesNotBlock) {
    const TestFolder folder;
    expectKeptForTheRun(folder.makeFIFO(u"settings.ini"_s));
}

TEST(SettingsStore, theValueReadLastIsReturnedIfTheFileCanNoLongerBeRead) {
    const TestFolder folder;
    const QString file = folder.write(u"settings.ini"_s, "[General]\na=1\n");
    SettingsStore store(file);
    EXPECT_EQ(store.value(u"a"_s), u"1"_s);
    folder.write(u"settings.ini"_s, "[General]\na=2\n" + QByteArray(1'000'000, '\n'));
    EXPECT_EQ(store.value(u"a"_s), u"1"_s);
}

TEST(SettingsStore, aFIFOThatReplacesTheFileDuringTheRunDoesNotBlock) {
    const TestFolder folder;
    const QString file = folder.path(u"settings.ini"_s);
    SettingsStore store(file);
    store.setValue(u"a"_s, u"1"_s);
    ASSERT_TRUE(QFile::remove(file));
    folder.makeFIFO(u"settings.ini"_s);
    EXPECT_EQ(store.value(u"a"_s), u"1"_s);
    store.setValue(u"b"_s, u"2"_s);
    EXPECT_EQ(store.value(u"b"_s), u"2"_s);
}

TEST(SettingsStore, aDeviceAtTheFilesPathIsNeitherReadNorReplaced) {
    const TestFolder folder;
    for (const QString& device : {u"/dev/null"_s, u"/dev/zero"_s}) {
        const QString link = folder.path(QFileInfo(device).fileName());
        ASSERT_TRUE(QFile::link(device, link));
        expectKeptForTheRun(link);
        EXPECT_EQ(QFileInfo(link).symLinkTarget(), device);
    }
}

TEST(SettingsStore, valuesStayInMemoryIfTheFolderCannotBeCreated) {
    const TestFolder folder;
    const QString file = folder.write(u"file"_s);
    expectKeptForTheRun(file + u"/folder/settings.ini"_s);
    EXPECT_EQ(contentOf(file), "x");
}

TEST(SettingsStore, aFolderWithTheNameOfALockFileIsIgnored) {
    const TestFolder folder;
    folder.makeFolder(u"settings.ini.lock"_s);
    SettingsStore store(folder.path(u"settings.ini"_s));
    store.setValue(u"key"_s, u"value"_s);
    EXPECT_EQ(store.value(u"key"_s), u"value"_s);
}

TEST(SettingsStore, valuesStayInMemoryIfTheFolderIsNotWritable) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QString config = folder.makeFolder(u"config"_s);
        setMode(config, 0500);
        expectKeptForTheRun(config + u"/settings.ini"_s);
        expectKeptForTheRun(config + u"/sub/settings.ini"_s);
        EXPECT_TRUE(QDir(config).isEmpty());
        setMode(config, 0700);
    }));
}

TEST(SettingsStore, theFileIsKeptAndValuesStayInMemoryIfTheDiskIsFull) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QByteArray content = "[General]\nelse=there\n";
        const QString file = folder.write(u"settings.ini"_s, content);
        // A process that may not write another byte sees a full disk.
        const rlimit none{0, RLIM_INFINITY};
        const rlimit any{RLIM_INFINITY, RLIM_INFINITY};
        std::signal(SIGXFSZ, SIG_IGN);
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
        SettingsStore store(file);
        store.setValue(u"key"_s, u"value"_s);
        EXPECT_EQ(store.value(u"key"_s), u"value"_s);
        EXPECT_EQ(contentOf(file), content);
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &any), 0);
        store.setValue(u"later"_s, u"1"_s);
        EXPECT_EQ(contentOf(file), "[General]\nelse=there\nkey=value\nlater=1\n");
    }));
}

TEST(SettingsStore, aFileThatCannotBeReadOrWrittenIsNotChangedAndValuesStayInMemory) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QByteArray content = "[General]\nkey=stored\nelse=there\n";
        const QString file = folder.write(u"settings.ini"_s, content);
        const QVariant stored = u"stored"_s;
        const std::pair<unsigned, std::optional<QVariant>> cases[] = {
            {0400U, stored}, {0444U, stored}, {0000U, std::nullopt}, {0200U, std::nullopt}};
        for (const auto& [mode, value] : cases) {
            setMode(file, mode);
            EXPECT_EQ(SettingsStore(file).value(u"key"_s), value) << mode;
            expectKeptForTheRun(file);
            EXPECT_EQ(modeOf(file), mode);
            setMode(file, 0600);
            EXPECT_EQ(contentOf(file), content) << mode;
        }
    }));
}

TEST(SettingsStore, valuesInMemoryAreStoredByTheNextWriteThatSucceeds) {
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QString config = folder.makeFolder(u"config"_s);
        const QString file = config + u"/settings.ini"_s;
        setMode(config, 0500);
        SettingsStore store(file);
        store.setValue(u"a"_s, u"1"_s);
        setMode(config, 0700);
        EXPECT_EQ(store.value(u"a"_s), u"1"_s);
        EXPECT_FALSE(QFileInfo::exists(file));
        store.setValue(u"b"_s, u"2"_s);
        EXPECT_EQ(contentOf(file), "[General]\na=1\nb=2\n");
        EXPECT_EQ(modeOf(file), 0600U);
    }));
}

TEST(SettingsStorePlace, isInTheConfigurationFolderOfTheEnvironment) {
    const ScopedVariable config("XDG_CONFIG_HOME", "/some/where");
    EXPECT_EQ(SettingsStore::placeFor(Bundle::main()), u"/some/where/org.ambulet.DailySteps.ini"_s);
}

TEST(SettingsStorePlace, isInTheHomeFoldersConfigurationFolderByDefault) {
    const ScopedVariable config("XDG_CONFIG_HOME", std::nullopt);
    const ScopedVariable home("HOME", "/home/someone");
    EXPECT_EQ(SettingsStore::placeFor(Bundle::main()),
              u"/home/someone/.config/org.ambulet.DailySteps.ini"_s);
}

TEST(SettingsStorePlace, aRelativeConfigurationFolderIsIgnored) {
    const ScopedVariable config("XDG_CONFIG_HOME", "some/where");
    const ScopedVariable home("HOME", "/home/someone");
    EXPECT_EQ(SettingsStore::placeFor(Bundle::main()),
              u"/home/someone/.config/org.ambulet.DailySteps.ini"_s);
}

TEST(SettingsStorePlace, theAccountsHomeIsUsedIfThereIsNoHomeVariable) {
    const QString account = QString::fromLocal8Bit(::getpwuid(::getuid())->pw_dir);
    const ScopedVariable config("XDG_CONFIG_HOME", std::nullopt);
    for (const auto& value : {std::optional<std::string>(), std::optional<std::string>("rel")}) {
        const ScopedVariable home("HOME", value);
        EXPECT_EQ(SettingsStore::placeFor(Bundle::main()),
                  account + u"/.config/org.ambulet.DailySteps.ini"_s);
    }
}

TEST(SettingsStorePlace, valuesStayInMemoryIfTheBundleHasNoIdentifier) {
    const TestFolder folder;
    const ScopedVariable config("XDG_CONFIG_HOME", folder.path(u"config"_s).toStdString());
    expectKeptForTheRun(SettingsStore::placeFor(Bundle(folder.path(u"none.plist"_s), {})));
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(SettingsStorePlace, systemwideSettingsAreNotRead) {
    const TestFolder folder;
    folder.write(u"system/org.ambulet.DailySteps.ini"_s, "[General]\nkey=system\n");
    const ScopedVariable system("XDG_CONFIG_DIRS", folder.path(u"system"_s).toStdString());
    const ScopedVariable config("XDG_CONFIG_HOME", folder.path(u"config"_s).toStdString());
    SettingsStore store(SettingsStore::placeFor(Bundle::main()));
    EXPECT_EQ(store.value(u"key"_s), std::nullopt);
}

}  // namespace

}  // namespace ambulet
