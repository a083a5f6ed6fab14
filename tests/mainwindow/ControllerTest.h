#pragma once

#include "mainwindow/MainWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"
#include "support/StepRecord.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <memory>
#include <string>

namespace ambulet {

struct TestRecord {
    const char* day;  // yyyy-MM-dd
    const char* value;
};

/// A main window controller with real settings and real files in a temporary folder.
class ControllerTest : public testing::Test {
  protected:
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }

    /// Writes an export with these step records, all at noon UTC. Returns the path of the export.
    QString writeExport(const char* name, std::initializer_list<TestRecord> records) const {
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<HealthData>\n";
        for (const TestRecord& record : records) {
            text += stepRecord(record.day + std::string(" 12:00:00 +0000"), record.value) + '\n';
        }
        return writeFile(name, QByteArray::fromStdString(text + "</HealthData>\n"));
    }

    QString writeFile(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }

    /// Makes a controller that remembers the path `file`; if it is null, what is stored. The window
    /// is not loaded yet.
    MainWindowController& makeController(const QString& file = {}) {
        if (!file.isNull()) {
            defaults.setString(SettingsKeys::xmlFilePath, file);
        }
        controller = std::make_unique<MainWindowController>(defaults, Bundle::main());
        return *controller;
    }

    /// Makes such a controller, shows its window and waits until the file is loaded.
    MainWindowController& load(const QString& file) {
        makeController(file).showWindow();
        waitForLoad();
        return *controller;
    }

    MainWindowController& load(std::initializer_list<TestRecord> records) {
        return load(writeExport("export.xml", records));
    }

    void waitForLoad() const {
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return status().startsWith(QLatin1String("Loaded")); }));
    }

    QString status() const { return controller->statusLabel()->text(); }

    /// From, to, days, total, miles, average.
    std::array<QLabel*, 6> statisticsLabels() const {
        return {controller->fromLabel(),  controller->toLabel(),    controller->daysLabel(),
                controller->totalLabel(), controller->milesLabel(), controller->averageLabel()};
    }

    QString cell(int row, const char* column) const {
        return controller->objectValueForTableColumn(QString::fromUtf8(column), row);
    }

    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        TableView& table = *controller->tableView();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers,
                          table.visualRect(table.model()->index(row, 0)).center());
    }

    QTemporaryDir folder;
    UserDefaults defaults{path("settings.ini")};
    std::unique_ptr<MainWindowController> controller;
};

}  // namespace ambulet
