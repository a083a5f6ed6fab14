#include "mainwindow/DialogTest.h"
#include "platform/FileBookmark.h"
#include "support/Environment.h"
#include "support/Faults.h"

#include <QDir>
#include <QPushButton>

#include <malloc.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace ambulet {

namespace {

class LoadingTest : public DialogTest {
  protected:
    QByteArray storedBookmark() const {
        return defaults.data(SettingsKeys::xmlFileBookmark).value_or(QByteArray());
    }
};

TEST_F(LoadingTest, noFileIsSelectedAndTheTableIsEmptyAtTheFirstStart) {
    makeController().showWindow();
    EXPECT_EQ(status(), QStringLiteral("No file selected."));
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 0);
    EXPECT_FALSE(controller->progressIndicator()->isVisible());
}

TEST_F(LoadingTest, theRememberedFileIsLoadedAtTheStart) {
    load({{"2025-03-02", "4000"}, {"2025-03-01", "10000"}, {"2025-02-27", "7000"}});
    EXPECT_EQ(status(), QStringLiteral("Loaded 3 days of data."));
    EXPECT_EQ(controller->allSteps().size(), 3U);
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 5);
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 3"));
}

TEST_F(LoadingTest, theStatusSaysDaysEvenForOneDay) {
    load({{"2025-03-02", "4000"}});
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, theIndicatorIsBusyWhileAFileIsRead) {
    makeController(writeExport("export.xml", {{"2025-03-02", "4000"}})).showWindow();
    EXPECT_TRUE(controller->progressIndicator()->isVisible());
    EXPECT_EQ(controller->progressIndicator()->maximum(), 0);
    waitForLoad();
    EXPECT_FALSE(controller->progressIndicator()->isVisible());
}

TEST_F(LoadingTest, aRememberedFileThatWasDeletedGivesNoDays) {
    const QString file = writeExport("gone.xml", {{"2025-03-02", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(file));
    ASSERT_TRUE(QFile::remove(file));
    load(file);
    EXPECT_EQ(status(), QStringLiteral("Loaded 0 days of data."));
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 0);
}

// The portal's path is stored, because only that path can be opened. The path outside is only
// shown.
TEST_F(LoadingTest, aFileFromADocumentPortalIsShownWithItsPathOutsideTheSandbox) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "4000"}});
    const std::string host = "/home/walker/Downloads/export.xml";
    ASSERT_EQ(::setxattr(file.toUtf8().constData(), "user.document-portal.host-path", host.data(),
                         host.size(), 0),
              0);
    makeController().showWindow();
    choose(file);
    EXPECT_EQ(controller->filePathField()->text(), QString::fromStdString(host));
    EXPECT_EQ(controller->filePath(), file);
    waitForLoad();
    EXPECT_EQ(controller->filePathField()->text(), QString::fromStdString(host));

    load(file);
    EXPECT_EQ(controller->filePathField()->text(), QString::fromStdString(host));
    EXPECT_EQ(controller->filePath(), file);
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, aTruncatedFileGivesTheDaysBeforeItsEnd) {
    load(writeFile("broken.xml", QByteArray::fromStdString(
                                     "<HealthData>" + stepRecord("2025-03-02 12:00:00 +0000", "7") +
                                     "<Record ty")));
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, aFIFOAtTheRememberedPathGivesNoDaysAndDoesNotBlock) {
    ASSERT_EQ(mkfifo(path("fifo.xml").toUtf8().constData(), 0600), 0);
    load(path("fifo.xml"));
    EXPECT_EQ(status(), QStringLiteral("Loaded 0 days of data."));
}

TEST_F(LoadingTest, anEmptyRememberedPathGivesNoDays) {
    load(QStringLiteral(""));
    EXPECT_EQ(status(), QStringLiteral("Loaded 0 days of data."));
}

TEST_F(LoadingTest, theDialogAsksForOneXMLFile) {
    makeController().showWindow();
    choose({}, [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Select a HealthKit XML export file"));
        EXPECT_EQ(dialog.labelText(QFileDialog::Accept), QStringLiteral("Open"));
        EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("XML files (*.xml *.XML)")));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_TRUE(dialog.isModal());
    });
}

TEST_F(LoadingTest, aFileThatIsNotNamedAsXMLCannotBeChosen) {
    const QString xml = writeExport("other.XML", {{"2025-03-02", "4000"}});
    makeController().showWindow();
    for (const char* other : {"export.txt", "export", "export.xml.zip", "xml"}) {
        const QString file = writeExport(other, {{"2025-03-02", "4000"}});
        choose(xml, [&](QFileDialog& dialog) {
            auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(name, nullptr);
            dialog.activateWindow();
            name->setFocus();
            ASSERT_TRUE(QTest::qWaitFor([name] { return name->hasFocus(); }));
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
            EXPECT_TRUE(dialog.isVisible()) << other;
            EXPECT_EQ(name->selectedText(), file);
        });
        EXPECT_EQ(controller->filePath(), xml) << other;
        waitForLoad();
    }
}

TEST_F(LoadingTest, theButtonOpensTheDialog) {
    makeController().showWindow();
    bool seen = false;
    QTimer::singleShot(0, [&seen] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        seen = true;
        dialog->reject();
    });
    controller->window()->findChild<QPushButton*>()->click();
    EXPECT_TRUE(seen);
}

TEST_F(LoadingTest, cancellingTheDialogLeavesEverythingAsItWas) {
    load({{"2025-03-02", "4000"}});
    const QByteArray bookmark = storedBookmark();
    choose({});
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
    EXPECT_EQ(controller->allSteps().size(), 1U);
    EXPECT_EQ(controller->filePath(), path("export.xml"));
    EXPECT_EQ(storedBookmark(), bookmark);
}

TEST_F(LoadingTest, cancellingTheDialogDoesNotStopALoad) {
    makeController(writeExport("export.xml", {{"2025-03-02", "4000"}})).showWindow();
    choose({});
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, choosingAFileRemovesTheEarlierDaysAndShowsTheNewPathAtOnce) {
    load({{"2025-03-02", "4000"}});
    const QString other = writeExport("other.xml", {{"2024-01-01", "1"}, {"2024-01-02", "2"}});
    choose(other);
    EXPECT_EQ(controller->filePathField()->text(), other);
    EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
    EXPECT_TRUE(controller->allSteps().empty());
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 0);
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 0"));
    EXPECT_EQ(controller->fromLabel()->text(), QStringLiteral("From: —"));
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
}

TEST_F(LoadingTest, aChosenFileIsRememberedByPathAndBookmark) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "4000"}});
    makeController().showWindow();
    choose(file);
    EXPECT_EQ(defaults.persistent(SettingsKeys::xmlFilePath), file);
    const auto resolved = FileBookmark::resolve(storedBookmark());
    ASSERT_TRUE(resolved);
    EXPECT_EQ(resolved->file.path, FileURL(file).path);
    EXPECT_FALSE(resolved->stale);

    load(QString());
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

// No bookmark can be made of a FIFO.
TEST_F(LoadingTest, aChosenFileWithoutABookmarkKeepsThePreviousBookmark) {
    const QString earlier = writeExport("export.xml", {{"2025-03-02", "1"}, {"2025-03-03", "1"}});
    makeController().showWindow();
    choose(earlier);
    waitForLoad();
    const QByteArray bookmark = storedBookmark();
    ASSERT_FALSE(bookmark.isEmpty());
    const QString fifo = path("fifo.xml");
    ASSERT_EQ(mkfifo(fifo.toUtf8().constData(), 0600), 0);
    choose(fifo);
    EXPECT_EQ(storedBookmark(), bookmark);
    EXPECT_EQ(defaults.persistent(SettingsKeys::xmlFilePath), fifo);
    EXPECT_EQ(controller->filePathField()->text(), fifo);
    waitForLoad();  // loads the earlier file, which the bookmark finds
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
}

TEST_F(LoadingTest, onlyTheStatusChangesIfThereIsNoFileToLoad) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}, {"2025-03-03", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(file));
    load(QString());
    click(1);
    controller->progressIndicator()->show();
    int reloads = 0;
    const QObject whileHere;
    QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset, &whileHere,
                     [&reloads] { ++reloads; });
    defaults.setData(SettingsKeys::xmlFileBookmark, QByteArray("no bookmark"));
    controller->loadData();
    EXPECT_EQ(status(), QStringLiteral("No file selected."));
    EXPECT_EQ(controller->allSteps().size(), 2U);
    EXPECT_EQ(reloads, 0);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 1"));
    EXPECT_TRUE(controller->progressIndicator()->isVisible());
    controller->progressIndicator()->hide();
    controller->loadData();
    EXPECT_FALSE(controller->progressIndicator()->isVisible());
}

TEST_F(LoadingTest, theBookmarkIsTriedBeforeThePath) {
    const QString one = writeExport("one.xml", {{"2025-03-02", "1"}});
    const QString two = writeExport("two.xml", {{"2025-03-02", "1"}, {"2025-03-03", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(one));
    load(two);
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
    EXPECT_EQ(controller->filePathField()->text(), two);
}

TEST_F(LoadingTest, thePathIsUsedIfTheBookmarkDoesNotResolve) {
    defaults.setData(SettingsKeys::xmlFileBookmark, QByteArray("no bookmark"));
    load({{"2025-03-02", "1"}});
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, aMovedFileIsFoundByItsBookmarkWhichIsThenReplaced) {
    const QString old = writeExport("export.xml", {{"2025-03-02", "1"}});
    const QByteArray bookmark = *FileBookmark::make(old);
    defaults.setData(SettingsKeys::xmlFileBookmark, bookmark);
    ASSERT_TRUE(QFile::rename(old, path("moved.xml")));
    load(old);
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
    EXPECT_NE(storedBookmark(), bookmark);
    EXPECT_FALSE(FileBookmark::resolve(storedBookmark())->stale);
    EXPECT_EQ(controller->filePathField()->text(), old);
    EXPECT_EQ(controller->filePath(), old);
    EXPECT_EQ(defaults.persistent(SettingsKeys::xmlFilePath), old);
}

TEST_F(LoadingTest, theLoadThatEndsLastDecidesWhatIsShown) {
    load({{"2025-03-02", "1"}});
    QList<std::size_t> loaded;
    const QObject whileHere;
    QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset, &whileHere,
                     [&] { loaded.append(controller->allSteps().size()); });
    // The result of a load is shown only when the event loop runs, so the two loads overlap.
    controller->loadData();
    const QString other = writeExport("other.xml", {{"2024-01-01", "1"}, {"2024-01-02", "2"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(other));
    controller->loadData();
    ASSERT_TRUE(QTest::qWaitFor([&loaded] { return loaded.size() == 2; }));
    EXPECT_TRUE(loaded.contains(1U) && loaded.contains(2U));
    EXPECT_EQ(controller->allSteps().size(), loaded.last());
    EXPECT_EQ(status(), QStringLiteral("Loaded %1 days of data.").arg(loaded.last()));
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: %1").arg(loaded.last()));
}

TEST_F(LoadingTest, aLoadDoesNotTouchAControllerThatWasDestroyed) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    makeController(file).showWindow();
    controller.reset();
    // Another load of the same file gives the first load time to end.
    load(file);
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, aChoiceLastsUntilTheProgramEndsIfTheSettingsCannotBeWritten) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("settings.ini")));
    makeController().showWindow();
    choose(file);
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
    controller->statusLabel()->clear();
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, nothingIsWrittenButTheSettings) {
    const QString configuration = qEnvironmentVariable("XDG_CONFIG_HOME");
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    makeController().showWindow();
    choose(file);
    waitForLoad();
    controller.reset();
    EXPECT_EQ(QDir(configuration).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({QStringLiteral("export.xml"), QStringLiteral("settings.ini")}));
}

TEST_F(LoadingTest, aMountThatHangsLeavesTheWindowUsable) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const QString file = writeExport("mount/export.xml", {{"2025-03-02", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(file));
    {
        const HangingFolder mount(path("mount").toStdString());
        makeController(file).showWindow();
        EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
        EXPECT_EQ(controller->filePathField()->text(), file);
        ASSERT_TRUE(QTest::qWaitFor([&mount] { return mount.otherThreadWaits(); }));
        controller->strideDidClick();
        EXPECT_TRUE(controller->strideEditor()->isVisible());
        controller->cancelStrideEdit();
        choose({}, [this](QFileDialog& dialog) {
            EXPECT_NE(dialog.directory().path(), path("mount"));
        });
        EXPECT_FALSE(mount.mainThreadHasAccessed());
    }
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, destroyingTheControllerDoesNotWaitForAMountThatHangs) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const QString file = writeExport("mount/export.xml", {{"2025-03-02", "1"}});
    const HangingFolder mount(path("mount").toStdString());
    makeController(file).showWindow();
    ASSERT_TRUE(QTest::qWaitFor([&mount] { return mount.otherThreadWaits(); }));
    controller.reset();
    EXPECT_TRUE(mount.otherThreadWaits());
}

// The dialog lists a folder, and accesses each entry, on a thread of its own.
TEST_F(LoadingTest, aMountThatHangsInAFolderShownByTheDialogDoesNotBlock) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    load(file);
    const HangingFolder mount(path("mount").toStdString());
    for (int showing = 0; showing < 2; ++showing) {
        choose({}, [&mount](QFileDialog&) {
            EXPECT_TRUE(QTest::qWaitFor([&mount] { return mount.otherThreadWaits(); }));
        });
    }
    EXPECT_FALSE(mount.mainThreadHasAccessed());
    controller->statusLabel()->clear();
    controller->loadData();
    waitForLoad();
    EXPECT_TRUE(mount.otherThreadWaits());
}

TEST_F(LoadingTest, noFileIsSelectedIfTheBookmarkDoesNotResolveAndThereIsNoPath) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(file));
    load(QString());
    ASSERT_TRUE(QFile::remove(file));
    controller->loadData();
    ASSERT_TRUE(QTest::qWaitFor([this] { return status() == QLatin1String("No file selected."); }));
    EXPECT_EQ(controller->allSteps().size(), 1U);
    EXPECT_FALSE(controller->progressIndicator()->isVisible());
}

TEST_F(LoadingTest, theDaysStayAndTheStatusReportsAnErrorIfNoThreadCanBeStarted) {
    load({{"2025-03-02", "1"}});
    {
        const NoThreads refused;
        controller->loadData();
        EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return status() == QStringLiteral("The file could not be read."); }));
    }
    EXPECT_FALSE(controller->progressIndicator()->isVisible());
    EXPECT_EQ(controller->allSteps().size(), 1U);
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 1 days of data."));
}

TEST_F(LoadingTest, aLoadThatEndsLateReplacesNeitherBookmarkNorFolderOfALaterChoice) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const QString earlier = writeExport("mount/export.xml", {{"2025-03-02", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(earlier));
    ASSERT_TRUE(QFile::rename(earlier, path("mount/moved.xml")));  // makes the bookmark stale
    const QString later = writeExport("later.xml", {{"2025-03-02", "1"}, {"2025-03-03", "1"}});
    QList<std::size_t> loaded;
    const QObject whileHere;
    {
        const HangingFolder mount(path("mount").toStdString());
        makeController(earlier).showWindow();
        QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset,
                         &whileHere, [&] { loaded.append(controller->allSteps().size()); });
        ASSERT_TRUE(QTest::qWaitFor([&mount] { return mount.otherThreadWaits(); }));
        choose(later);
        ASSERT_TRUE(QTest::qWaitFor([&loaded] { return loaded.contains(2U); }));
    }
    ASSERT_TRUE(QTest::qWaitFor([&loaded] { return loaded.contains(1U); }));
    EXPECT_EQ(FileBookmark::resolve(storedBookmark())->file.path, FileURL(later).path);
    EXPECT_EQ(controller->filePathField()->text(), later);
    choose({},
           [this](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), folder.path()); });
}

TEST_F(LoadingTest, aLoadThatEndsKeepsTheSelectionInThePathField) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const QString file = writeExport("mount/export.xml", {{"2025-03-02", "1"}});
    {
        const HangingFolder mount(path("mount").toStdString());
        makeController(file).showWindow();
        ASSERT_TRUE(QTest::qWaitFor([&mount] { return mount.otherThreadWaits(); }));
        controller->window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
        controller->filePathField()->setFocus();
        controller->filePathField()->selectAll();
    }
    waitForLoad();
    EXPECT_EQ(controller->filePathField()->selectedText(), file);
}

// The C library reads TZ again only when it is told to.
TEST_F(LoadingTest, aLoadReadsTheTimeZoneAgain) {
    const ScopedTimeZone berlin("Europe/Berlin");
    load(writeFile("export.xml", QByteArray::fromStdString(
                                     "<HealthData>" + stepRecord("2025-03-02 03:00:00 +0000", "7") +
                                     "</HealthData>")));
    ASSERT_EQ(cell(1, "date"), QStringLiteral("Mar 2, 2025"));
    const ScopedVariable newYork("TZ", "America/New_York");
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(cell(1, "date"), QStringLiteral("Mar 1, 2025"));
}

// 03:00 UTC is March 2 in Berlin and still March 1 in New York.
TEST_F(LoadingTest, aChangeOfTheTimeZoneTakesEffectAtTheNextLoad) {
    const ScopedTimeZone berlin("Europe/Berlin");
    const std::string text = "<HealthData>" + stepRecord("2025-03-02 03:00:00 +0000", "7") +
                             stepRecord("2025-02-01 03:00:00 +0000", "5") + "</HealthData>";
    load(writeFile("export.xml", QByteArray::fromStdString(text)));
    const QStringList inBerlin = {QStringLiteral("March 2025"), QStringLiteral("Mar 2, 2025"),
                                  QStringLiteral("February 2025"), QStringLiteral("Feb 1, 2025")};
    const auto shown = [this] {
        QStringList dates;
        for (int row = 0; row < controller->numberOfRowsInTableView(); ++row) {
            dates.append(cell(row, "date"));
        }
        return dates;
    };
    ASSERT_EQ(shown(), inBerlin);
    const ScopedTimeZone newYork("America/New_York");
    EXPECT_EQ(shown(), inBerlin);
    controller->rebuildDisplayRows();
    controller->recomputeStats();
    EXPECT_EQ(shown(), inBerlin);
    EXPECT_EQ(controller->fromLabel()->text(), QStringLiteral("From: Feb 1, 2025"));
    EXPECT_EQ(controller->toLabel()->text(), QStringLiteral("To: Mar 2, 2025"));
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(shown(),
              QStringList({QStringLiteral("March 2025"), QStringLiteral("Mar 1, 2025"),
                           QStringLiteral("January 2025"), QStringLiteral("Jan 31, 2025")}));
}

struct Resources {
    qsizetype threads;
    qsizetype descriptors;
    std::size_t memory;  // allocated by malloc, in all arenas

    static Resources now() {
        const auto entries = [](const char* folder) {
            return QDir(QString::fromUtf8(folder))
                .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                .size();
        };
        return {entries("/proc/self/task"), entries("/proc/self/fd"), ::mallinfo2().uordblks};
    }
};

TEST_F(LoadingTest, threeHundredLoadsLeakNoThreadsDescriptorsOrMemory) {
    load({{"2025-03-02", "4000"}, {"2025-03-01", "10000"}, {"2025-02-27", "7000"}});
    const auto loadTimes = [this](int times) {
        for (int i = 0; i < times; ++i) {
            controller->loadData();
            waitForLoad();
        }
    };
    loadTimes(20);  // what is allocated only once is allocated here
    const Resources before = Resources::now();
    loadTimes(300);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Resources::now().threads <= before.threads; }));
    const Resources after = Resources::now();
    EXPECT_EQ(after.descriptors, before.descriptors);
    constexpr std::size_t perLoad = 100;  // bytes
    EXPECT_LT(after.memory, before.memory + 300 * perLoad);
}

}  // namespace

}  // namespace ambulet
