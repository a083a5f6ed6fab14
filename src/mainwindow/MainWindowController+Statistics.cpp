// The six labels.

#include "mainwindow/MainWindowController.h"
#include "model/StepTotals.h"
#include "text/LocalTime.h"
#include "text/TwoDecimals.h"

namespace ambulet {

namespace {

void setText(QLabel* label, const QString& text) {
    if (label != nullptr) {
        label->setText(text);
    }
}

void setBold(QLabel* label, bool bold) {
    if (label != nullptr) {
        QFont font = label->font();
        font.setBold(bold);
        label->setFont(font);
    }
}

}  // namespace

void MainWindowController::recomputeStats() {
    if (!_tableView || _tableView->selectedRowIndexes().empty()) {
        updateStatsForSteps(_allSteps);
        return;
    }
    std::vector<DailySteps> selected;
    selected.reserve(_tableView->selectedRowIndexes().size());
    for (const int row : _tableView->selectedRowIndexes()) {
        const DisplayRow& shown = _displayRows.at(static_cast<std::size_t>(row));
        if (const auto* day = std::get_if<DailySteps>(&shown)) {
            selected.push_back(*day);
        }
    }
    updateStatsForSteps(selected);
}

void MainWindowController::updateStatsForSteps(std::span<const DailySteps> steps) {
    const auto date = [this](const DailySteps& day) {
        return QString::fromStdString(_displayFormatter.string(*day.date()));
    };
    const auto count = [this](auto number) {
        return QString::fromStdString(_stepsFormatter.string(number));
    };
    const auto miles = [this](double number) {
        return QString::fromStdString(_milesFormatter.string(number));
    };

    const bool selection = _tableView && !_tableView->selectedRowIndexes().empty();
    setBold(_fromLabel, selection);
    setBold(_toLabel, selection);

    const double stride = strideFeet();
    const StepTotals totals(steps, stride);
    setText(_daysLabel, QStringLiteral("Days: %1").arg(totals.days()));
    if (steps.empty()) {
        setText(_fromLabel, QStringLiteral("From: —"));
        setText(_toLabel, QStringLiteral("To: —"));
        setText(_totalLabel, QStringLiteral("Steps: —"));
        setText(_milesLabel, QStringLiteral("Miles: —"));
        setText(_averageLabel, QStringLiteral("Average: —"));
        return;
    }
    // Newest first.
    setText(_fromLabel, QStringLiteral("From: ") + date(steps.back()));
    setText(_toLabel, QStringLiteral("To: ") + date(steps.front()));
    setText(_totalLabel, QStringLiteral("Steps: ") + count(totals.steps()));
    setText(_milesLabel,
            QStringLiteral("Miles: %1 @ %2 ft/step")
                .arg(miles(totals.miles()), QString::fromStdString(twoDecimals(stride))));
    setText(_averageLabel, QStringLiteral("Average: %1 steps/day, %2 miles/day")
                               .arg(count(totals.averageSteps()), miles(totals.averageMiles())));
}

std::optional<std::chrono::sys_seconds>
MainWindowController::startOfDay(std::chrono::sys_seconds date) {
    return ambulet::startOfDay(localDate(date));
}

}  // namespace ambulet
