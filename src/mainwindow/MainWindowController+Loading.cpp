// Choosing, remembering and loading the file.

#include "import/HealthXMLParser.h"
#include "mainwindow/ExportFileDialog.h"
#include "mainwindow/MainWindowController.h"
#include "platform/BackgroundTask.h"
#include "text/LocalTime.h"
#include "widgets/AfterFirstPaint.h"

#include <QCoreApplication>

#include <utility>

namespace ambulet {

namespace {

// The offsets at the starts of the days. Called right after the days were summed, while the time
// zone is still the same.
DayOffsets offsetsOf(const std::vector<DailySteps>& days) {
    std::vector<std::chrono::sys_seconds> instants;
    instants.reserve(days.size());
    for (const DailySteps& day : days) {
        if (const auto date = day.date()) {
            instants.push_back(*date);
        }
    }
    return DayOffsets(instants);
}

}  // namespace

FoundFile MainWindowController::resolvedFileURL(const RememberedFile& remembered) {
    return findFile(remembered);
}

void MainWindowController::loadData() {
    const RememberedFile remembered = _exportFile.remembered();
    if (remembered.isNone()) {
        showStatus(QStringLiteral("No file selected."));
        return;
    }
    startProgress();
    showStatus(QStringLiteral("Parsing XML…"));
    // Otherwise the reader's threads would compete with the first painting for the cores.
    afterFirstPaint(*this, [this, remembered] { startReading(remembered); });
}

void MainWindowController::startReading(const RememberedFile& remembered) {
    runInBackground(
        [remembered] {
            readTimeZone();
            Load load{resolvedFileURL(remembered), {}, {}, {}};
            load.shownPath = shownPath(remembered.path.value_or(QString()));
            if (load.found.file) {
                load.days = HealthXMLParser().parseURL(load.found.file->path);
                load.found.access.reset();
                load.offsets = offsetsOf(load.days);
            }
            return std::optional(std::move(load));
        },
        this,
        [this, remembered](std::optional<Load> load) { didLoad(remembered, std::move(load)); });
}

// `load` is empty if no thread could be started, or if the load threw an exception.
void MainWindowController::didLoad(const RememberedFile& remembered, std::optional<Load> load) {
    stopProgress();
    if (!load) {
        showStatus(QStringLiteral("The file could not be read."));
        return;
    }
    _exportFile.refresh(remembered, load->found);
    if (remembered.path == filePath()) {
        showPath(load->shownPath);
    }
    if (!load->found.file) {
        showStatus(QStringLiteral("No file selected."));
        return;
    }
    _displayFormatter.setOffsets(load->offsets);
    _allSteps = std::move(load->days);
    showStatus(QStringLiteral("Loaded %1 days of data.").arg(_allSteps.size()));
    rebuildDisplayRows();
    updateStatsForSteps(_allSteps);
    // Lays out the window now. Otherwise it may first be painted with its views in their old
    // places.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

void MainWindowController::chooseFileAction() {
    const std::optional<QString> path =
        askForExportFile(_exportFile.foundPath(), window()->windowHandle());
    if (!path) {
        return;
    }
    _exportFile.choose(*path);
    showPath(shownPath(*path));
    _allSteps.clear();
    _displayRows.clear();
    if (_tableView) {
        _tableView->reloadData();
    }
    updateStatsForSteps(_allSteps);
    loadData();
}

void MainWindowController::showPath(const QString& path) {
    if (_filePathField && _filePathField->text() != path) {  // setText() clears the selection
        _filePathField->setText(path);
    }
}

void MainWindowController::showStatus(const QString& text) {
    if (_statusLabel) {
        _statusLabel->announce(text);
    }
}

void MainWindowController::startProgress() {
    if (_progressIndicator) {
        _progressIndicator->setRange(0, 0);  // busy, without a percentage
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
