#include "mainwindow/ExportFileDialog.h"

#include "mainwindow/DialogTest.h"
#include "platform/FileBookmark.h"
#include "support/Environment.h"
#include "support/Faults.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QListView>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace ambulet {

namespace {

class ExportFileDialogTest : public DialogTest {
  protected:
    // Waits until the dialog lists `rows` files and folders, and returns the list.
    static QTreeView& listed(QFileDialog& dialog, int rows) {
        auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == rows; }));
        return *list;
    }
};

TEST_F(ExportFileDialogTest, hasTheMetaObjectThatLetsQtShowThePlatformsDialog) {
    const ExportFileDialog dialog(folder.path(), nullptr);
    EXPECT_EQ(dialog.metaObject(), &QFileDialog::staticMetaObject);
}

TEST_F(ExportFileDialogTest, isReadOnlyAndWatchesNoFolder) {
    makeController().showWindow();
    choose({}, [](QFileDialog& dialog) {
        EXPECT_TRUE(dialog.testOption(QFileDialog::ReadOnly));
        const auto* const model = dialog.findChild<QFileSystemModel*>();
        ASSERT_NE(model, nullptr);
        EXPECT_TRUE(model->isReadOnly());
        EXPECT_TRUE(model->testOption(QFileSystemModel::DontWatchForChanges));
    });
}

TEST_F(ExportFileDialogTest, opensNoneOfTheFilesThatItLists) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("exports")));
    constexpr int files = 100;
    for (int i = 0; i < files; ++i) {
        writeFile(QStringLiteral("exports/%1.xml").arg(i).toUtf8().constData(), "<HealthData/>");
        writeFile(QStringLiteral("exports/%1").arg(i).toUtf8().constData(), "#!/bin/sh\n");
    }
    makeController(path("exports/0.xml")).showWindow();
    waitForLoad();
    const OpenLog log;
    choose({}, [](QFileDialog& dialog) { listed(dialog, files); });
    bool folderWasRead = false;
    for (const std::string& opened : log.paths()) {
        const QString name = QString::fromStdString(opened);
        folderWasRead = folderWasRead || QDir::cleanPath(name) == path("exports");
        EXPECT_FALSE(name.startsWith(path("exports/")) && name.size() > path("exports/").size())
            << opened;
    }
    EXPECT_TRUE(folderWasRead);
}

TEST_F(ExportFileDialogTest, opensInTheFolderOfTheRememberedFileEachTime) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("exports")));
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("others")));
    makeController(writeExport("exports/export.xml", {{"2025-03-02", "1"}})).showWindow();
    for (int i = 0; i < 2; ++i) {
        choose({}, [this](QFileDialog& dialog) {
            EXPECT_EQ(dialog.directory().path(), path("exports"));
            EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("XML files (*.xml *.XML)")));
            dialog.setDirectory(path("others"));
        });
    }
    choose(writeExport("others/export.xml", {{"2025-03-02", "1"}}));
    choose({},
           [this](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), path("others")); });
}

TEST_F(ExportFileDialogTest, opensInTheFolderWhereAMovedFileWasFoundUntilAnotherIsChosen) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("exports")));
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("others")));
    const QString old = writeExport("exports/export.xml", {{"2025-03-02", "1"}});
    const QString second = writeExport("exports/second.xml", {{"2025-03-02", "1"}});
    defaults.setData(SettingsKeys::xmlFileBookmark, *FileBookmark::make(old));
    ASSERT_TRUE(QFile::rename(old, path("others/export.xml")));
    load(old);
    choose(second,
           [this](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), path("others")); });
    choose({},
           [this](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), path("exports")); });
}

// The test does what a platform's dialog does: it closes with a file of any name, and forgets
// folder and filter.
TEST_F(ExportFileDialogTest, opensAgainWhereTheUserWasAfterAFileWithAnotherSuffix) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("others")));
    const QString text = writeFile("others/notes.txt", "");
    ExportFileDialog dialog(folder.path(), nullptr);
    int showings = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (!dialog.isVisible()) {
            return;
        }
        ++showings;
        if (showings > 1) {
            EXPECT_EQ(dialog.directory().path(), path("others"));
            EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("XML files (*.xml *.XML)"));
            dialog.reject();
            return;
        }
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(text);
        dialog.setNameFilter(QStringLiteral("All files (*)"));
        static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    answer.start(0);
    EXPECT_EQ(dialog.ask(), std::nullopt);
    EXPECT_EQ(showings, 2);
}

TEST_F(ExportFileDialogTest, opensInDownloadsOrHomeIfTheRememberedFolderIsMissingOrHangs) {
    const ScopedVariable home("HOME", folder.path().toStdString());
    EXPECT_EQ(startFolder(std::nullopt), folder.path());
    EXPECT_EQ(startFolder(path("missing/export.xml")), folder.path());
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Downloads")));
    EXPECT_EQ(startFolder(std::nullopt), path("Downloads"));
    EXPECT_EQ(startFolder(QStringLiteral("")), path("Downloads"));
    EXPECT_EQ(startFolder(path("missing/export.xml")), path("Downloads"));
    EXPECT_EQ(startFolder(path("export.xml")), folder.path());
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("mount")));
    const HangingFolder mount(path("mount").toStdString());
    EXPECT_EQ(startFolder(path("mount/export.xml")), path("Downloads"));
    EXPECT_FALSE(mount.mainThreadHasAccessed());
}

TEST_F(ExportFileDialogTest, staysInFrontOfTheMainWindow) {
    makeController().showWindow();
    choose({}, [this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowHandle()->transientParent(), controller->window()->windowHandle());
    });
}

TEST_F(ExportFileDialogTest, listsFilesWithTheSuffixXMLInUpperOrLowerCase) {
    for (const char* name : {"a.xml", "b.XML", "c.txt", "d"}) {
        writeFile(name, "");
    }
    makeController(path("a.xml")).showWindow();
    waitForLoad();
    choose({}, [](QFileDialog& dialog) { listed(dialog, 2); });
}

TEST_F(ExportFileDialogTest, isWideEnoughForItsColumnsAndListsTheUsualFolders) {
    const ScopedVariable home("HOME", path("ada").toStdString());
    for (const char* usual : {"ada", "ada/Downloads", "ada/Documents", "ada/Desktop"}) {
        ASSERT_TRUE(QDir(folder.path()).mkdir(QString::fromUtf8(usual)));
    }
    const QString file = writeExport("export of all health data.xml", {{"2025-03-02", "1"}});
    makeController(file).showWindow();
    waitForLoad();
    choose({}, [this](QFileDialog& dialog) {
        QTreeView& list = listed(dialog, 2);
        EXPECT_LE(list.header()->length(), list.viewport()->width());
        for (int column = 0; column < list.model()->columnCount(); ++column) {
            for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
                const QModelIndex cell = list.model()->index(row, column, list.rootIndex());
                EXPECT_GE(list.columnWidth(column), list.sizeHintForIndex(cell).width()) << column;
            }
        }
        QStringList places;
        for (const QUrl& url : dialog.sidebarUrls()) {
            places.append(url.toLocalFile());
        }
        EXPECT_EQ(places, QStringList({path("ada/Downloads"), path("ada/Documents"),
                                       path("ada/Desktop"), path("ada")}));
        const auto* const side = dialog.findChild<QListView*>(QStringLiteral("sidebar"));
        for (int row = 0; row < side->model()->rowCount(); ++row) {
            EXPECT_LE(side->sizeHintForIndex(side->model()->index(row, 0)).width(),
                      side->viewport()->width());
        }
        dialog.grab().save(QStringLiteral(AMBULET_PICTURES "/dialog.png"));
    });
}

TEST_F(ExportFileDialogTest, doesNotListUsualFoldersThatAreMissing) {
    const ScopedVariable home("HOME", folder.path().toStdString());
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Documents")));
    writeFile("Desktop", "");
    makeController().showWindow();
    choose({}, [this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.sidebarUrls(), QList<QUrl>({QUrl::fromLocalFile(path("Documents")),
                                                     QUrl::fromLocalFile(folder.path())}));
    });
}

TEST_F(ExportFileDialogTest, listsAFolderOnceIfItServesTwoPurposes) {
    const ScopedVariable home("HOME", folder.path().toStdString());
    const ScopedVariable configuration("XDG_CONFIG_HOME", folder.path().toStdString());
    writeFile("user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Files\"\n"
                                "XDG_DOCUMENTS_DIR=\"$HOME/Files\"\n"
                                "XDG_DESKTOP_DIR=\"$HOME/\"\n");
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Files")));
    makeController().showWindow();
    choose({}, [this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.sidebarUrls(), QList<QUrl>({QUrl::fromLocalFile(path("Files")),
                                                     QUrl::fromLocalFile(folder.path())}));
    });
}

// Qt does not list such a file, so the test types the name, with U+FFFD for the byte that is not
// UTF-8.
TEST_F(ExportFileDialogTest, canChooseAFileWhoseNameIsNotUtf8) {
    const QString plain = writeExport("plain.xml", {{"2025-03-02", "1"}, {"2025-03-03", "1"}});
    const QByteArray name = QFile::encodeName(path("M")) + "\xe4rz.xml";
    ASSERT_EQ(::rename(QFile::encodeName(plain).constData(), name.constData()), 0);
    makeController().showWindow();
    choose(path("M\uFFFDrz.xml"));
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
    EXPECT_EQ(controller->filePathField()->text(), path("M\uFFFDrz.xml"));
    makeController().showWindow();
    waitForLoad();
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
    ::unlink(name.constData());  // QTemporaryDir would not remove the file
}

TEST_F(ExportFileDialogTest, aTypedPathStaysEvenIfTheFieldDoesNotHaveTheFocus) {
    const QString file = writeExport("export.xml", {{"2025-03-02", "1"}});
    makeController(file).showWindow();
    waitForLoad();
    choose({}, [&](QFileDialog& dialog) {
        QTreeView& list = listed(dialog, 1);
        auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->clearFocus();
        QTest::keyClicks(name, file);
        EXPECT_EQ(name->text(), file);
        EXPECT_EQ(dialog.selectedFiles().join(u' '), file);
        const QModelIndex row = list.model()->index(0, 0, list.rootIndex());
        EXPECT_EQ(row.data().toString(), QStringLiteral("export.xml"));
        list.selectionModel()->clearSelection();
        list.selectionModel()->select(row, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        EXPECT_EQ(name->text(), QStringLiteral("export.xml"));
    });
}

TEST_F(ExportFileDialogTest, isDestroyedAfterItHasBeenShown) {
    makeController().showWindow();
    choose({});
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        EXPECT_EQ(qobject_cast<const QFileDialog*>(window), nullptr);
    }
}

#ifndef __SANITIZE_ADDRESS__  // AddressSanitizer's malloc has no statistics
// AMBULET_NEIGHBOURS: the number of files in the folder of the remembered file, at least 10,000.
TEST_F(ExportFileDialogTest, freesItsMemoryAfterItHasBeenShown) {
    const int files = std::max(10'000, qEnvironmentVariableIntValue("AMBULET_NEIGHBOURS"));
    for (int i = 0; i < files; ++i) {
        const std::string name = folder.path().toStdString() + '/' + std::to_string(i) + ".xml";
        const int file = ::creat(name.c_str(), 0600);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    makeController(path("0.xml")).showWindow();
    waitForLoad();
    const auto inUse = [] { return ::mallinfo2().uordblks; };
    const std::size_t before = inUse();
    std::size_t open = 0;
    choose({}, [&](QFileDialog& dialog) {
        const auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return list->model()->rowCount(list->rootIndex()) >= files; }, 600'000));
        open = inUse();
    });
    EXPECT_GT(open, before + static_cast<std::size_t>(files) * 100);
    EXPECT_TRUE(QTest::qWaitFor([&] { return inUse() < before + (open - before) / 4; }, 60'000))
        << inUse() - before << " of " << open - before;
}
#endif

}  // namespace

}  // namespace ambulet
