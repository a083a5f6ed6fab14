// Choosing, remembering and loading the file.

#include "import/HealthXMLParser.h"
#include "mainwindow/ExportFileDialog.h"
#include "mainwindow/MainWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/BackgroundTask.h"
#include "platform/FileAccess.h"
#include "platform/FileBookmark.h"
#include "platform/UserDefaults.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace ambulet {

std::optional<FileURL> MainWindowController::resolvedFileURL() {
    if (const auto data = _defaults.data(SettingsKeys::xmlFileBookmark)) {
        if (const auto resolved = FileBookmark::resolve(*data)) {
            if (resolved->stale) {
                if (const auto fresh = FileBookmark::make(resolved->file)) {
                    _defaults.setData(SettingsKeys::xmlFileBookmark, *fresh);
                }
            }
            return resolved->file;
        }
    }
    // The path stays what it was, also after the bookmark has led to the file's new place.
    return _filePath ? std::optional(FileURL{*_filePath}) : std::nullopt;
}

void MainWindowController::loadData() {
    const std::optional<FileURL> file = resolvedFileURL();
    if (!file) {
        if (_statusLabel) {
            _statusLabel->setText(QStringLiteral("No file selected."));
        }
        return;
    }
    startProgress();
    if (_statusLabel) {
        _statusLabel->setText(QStringLiteral("Parsing XML…"));
    }
    runInBackground(
        [file = *file, access = FileAccess(*file)] {
            HealthXMLParser parser;
            return parser.parseURL(QFile::encodeName(file.path).toStdString());
        },
        this, [this](std::vector<DailySteps> days) { didLoad(std::move(days)); });
}

void MainWindowController::didLoad(std::vector<DailySteps> days) {
    _allSteps = std::move(days);
    stopProgress();
    if (_statusLabel) {
        _statusLabel->setText(QStringLiteral("Loaded %1 days of data.").arg(_allSteps.size()));
    }
    rebuildDisplayRows();
    updateStatsForSteps(_allSteps);
}

void MainWindowController::chooseFileAction() {
    const std::optional<QString> path = askForFile();
    if (!path) {
        return;
    }
    _filePath = path;
    _defaults.setString(SettingsKeys::xmlFilePath, *path);
    // Where no bookmark can be made the earlier one stays, and the next load follows it.
    if (const auto bookmark = FileBookmark::make({*path})) {
        _defaults.setData(SettingsKeys::xmlFileBookmark, *bookmark);
    }
    if (_filePathField) {
        _filePathField->setText(*path);
    }
    _allSteps.clear();
    _displayRows.clear();
    if (_tableView) {
        _tableView->reloadData();
    }
    updateStatsForSteps(_allSteps);
    loadData();
}

std::optional<QString> MainWindowController::askForFile() {
    if (_fileDialog == nullptr) {
        _fileDialog = new ExportFileDialog(
            _filePath ? QFileInfo(*_filePath).path() : QDir::homePath(), window()->windowHandle());
    }
    return _fileDialog->ask();
}

void MainWindowController::startProgress() {
    if (_progressIndicator) {
        _progressIndicator->setRange(0, 0);  // busy, of no known length
        _progressIndicator->show();
    }
}

void MainWindowController::stopProgress() {
    if (_progressIndicator) {
        _progressIndicator->hide();
        _progressIndicator->setRange(0, 1);
    }
}

}  // namespace ambulet
