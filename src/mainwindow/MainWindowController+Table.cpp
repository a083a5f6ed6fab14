// From days to the table's rows, and from rows to the texts of its cells.

#include "mainwindow/MainWindowController.h"
#include "model/StepTotals.h"
#include "text/MonthReader.h"

#include <optional>

namespace ambulet {

void MainWindowController::rebuildDisplayRows() {
    _displayRows = buildDisplayRows(_allSteps);
    if (_tableView) {
        _tableView->reloadData();
    }
}

std::vector<DisplayRow>
MainWindowController::buildDisplayRows(std::span<const DailySteps> days) const {
    std::vector<DisplayRow> rows;
    if (days.empty()) {
        return rows;
    }
    DateFormatter titleFormatter = DateFormatter::withPattern("MMMM yyyy");
    titleFormatter.setOffsets(_displayFormatter.offsets());
    MonthReader calendar(_displayFormatter.offsets());
    const double stride = strideFeet();
    const auto closeGroup = [&](std::span<const DailySteps> group) {
        rows.emplace_back(makeSummary(group, stride, titleFormatter));
        rows.insert(rows.end(), group.begin(), group.end());
    };
    std::size_t first = 0;
    MonthReader::Month month = calendar.month(*days.front().date());
    for (std::size_t i = 1; i < days.size(); ++i) {
        const MonthReader::Month next = calendar.month(*days[i].date());
        if (next != month) {
            closeGroup(days.subspan(first, i - first));
            first = i;
            month = next;
        }
    }
    closeGroup(days.subspan(first));
    return rows;
}

MonthSummary MainWindowController::makeSummary(std::span<const DailySteps> days, double stride,
                                               const DateFormatter& formatter) {
    const StepTotals totals(days, stride);
    MonthSummary summary;
    if (!days.empty()) {
        summary.setTitle(formatter.string(*days.front().date()));
    }
    summary.setTotalSteps(totals.steps());
    summary.setAvgSteps(totals.averageSteps());
    summary.setAvgMiles(totals.averageMiles());
    return summary;
}

int MainWindowController::numberOfRowsInTableView() const {
    return static_cast<int>(_displayRows.size());
}

bool MainWindowController::isGroupRow(int row) const {
    return std::holds_alternative<MonthSummary>(_displayRows.at(static_cast<std::size_t>(row)));
}

bool MainWindowController::shouldSelectRow(int row) const {
    return !isGroupRow(row);
}

QString MainWindowController::objectValueForTableColumn(const QString& identifier, int row) const {
    const DisplayRow& shown = _displayRows.at(static_cast<std::size_t>(row));
    const auto* month = std::get_if<MonthSummary>(&shown);
    const auto* day = std::get_if<DailySteps>(&shown);
    std::optional<std::string> text;
    if (identifier == QLatin1String("date")) {
        text = month != nullptr ? month->title() : _displayFormatter.string(*day->date());
    } else if (identifier == QLatin1String("steps")) {
        text = _stepsFormatter.string(month != nullptr ? month->totalSteps() : day->steps());
    } else if (identifier == QLatin1String("avgSteps") && month != nullptr) {
        text = _stepsFormatter.string(month->avgSteps());
    } else if (identifier == QLatin1String("avgMiles") && month != nullptr) {
        text = _milesFormatter.string(month->avgMiles());
    }
    return text ? QString::fromStdString(*text) : QString();
}

void MainWindowController::tableViewSelectionDidChange() {
    recomputeStats();
}

}  // namespace ambulet
