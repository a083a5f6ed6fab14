// The rows of the table, and the texts of its cells.

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
    const auto monthOf = [&calendar](const DailySteps& day) {
        return day.date() ? std::optional(calendar.month(*day.date())) : std::nullopt;
    };
    std::optional<MonthReader::Month> month = monthOf(days.front());
    for (std::size_t i = 1; i < days.size(); ++i) {
        const std::optional<MonthReader::Month> next = monthOf(days[i]);
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
    if (const auto date = days.empty() ? std::nullopt : days.front().date()) {
        summary.setTitle(formatter.string(*date));
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
        if (month != nullptr) {
            text = month->title();
        } else if (const auto date = day->date()) {
            text = _displayFormatter.string(*date);
        }
    } else if (identifier == QLatin1String("steps")) {
        text = _stepsFormatter.string(month != nullptr ? month->totalSteps() : day->steps());
    } else if (identifier == QLatin1String("avgSteps") && month != nullptr) {
        text = _stepsFormatter.string(month->avgSteps());
    } else if (identifier == QLatin1String("avgMiles") && month != nullptr) {
        text = _milesFormatter.string(month->avgMiles());
    }
    return text ? QString::fromStdString(*text) : QString();
}

// With digits of equal width, the widest number is the one with the most digits: the greatest or
// the least.
std::vector<int> MainWindowController::rowsWithWidestTexts(const QString& identifier) const {
    std::vector<int> rows;
    const auto addExtremes = [&](auto number, bool ofMonths) {
        int least = -1;
        int greatest = -1;
        for (int row = 0; row < numberOfRowsInTableView(); ++row) {
            if (isGroupRow(row) == ofMonths) {
                least = least < 0 || number(row) < number(least) ? row : least;
                greatest = greatest < 0 || number(greatest) < number(row) ? row : greatest;
            }
        }
        if (least >= 0) {
            rows.insert(rows.end(), {least, greatest});
        }
    };
    const auto month = [this](int row) -> const MonthSummary& {
        return std::get<MonthSummary>(_displayRows[static_cast<std::size_t>(row)]);
    };
    if (identifier == QLatin1String("date")) {
        // All titles, and one day of each month.
        for (int row = 0; row < numberOfRowsInTableView(); ++row) {
            if (isGroupRow(row)) {
                rows.insert(rows.end(), {row, row + 1});
            }
        }
    } else if (identifier == QLatin1String("steps")) {
        addExtremes([&](int row) { return month(row).totalSteps(); }, true);
        addExtremes(
            [this](int row) {
                return std::get<DailySteps>(_displayRows[static_cast<std::size_t>(row)]).steps();
            },
            false);
    } else if (identifier == QLatin1String("avgSteps")) {
        addExtremes([&](int row) { return month(row).avgSteps(); }, true);
    } else if (identifier == QLatin1String("avgMiles")) {
        addExtremes([&](int row) { return month(row).avgMiles(); }, true);
    }
    return rows;
}

QString MainWindowController::textOfEmptyTable() const {
    return filePath() ? QString()
                      : QStringLiteral("Export your health data on the phone, move the file "
                                       "export.zip here and unpack it.\n"
                                       "Then choose export.xml with the button above.");
}

void MainWindowController::tableViewSelectionDidChange() {
    recomputeStats();
}

}  // namespace ambulet
