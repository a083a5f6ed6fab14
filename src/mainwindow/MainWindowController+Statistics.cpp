// The texts of the six statistics labels.

#include "mainwindow/MainWindowController.h"
#include "model/StepTotals.h"
#include "text/LocalTime.h"
#include "text/TwoDecimals.h"

#include <algorithm>

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

// Isolates a date or number of a right-to-left language, so that the left-to-right text around it
// keeps its order. Returns any other text as it is.
QString isolated(const QString& text) {
    constexpr QChar firstStrongIsolate = u'\u2068';
    constexpr QChar popDirectionalIsolate = u'\u2069';
    const bool rightToLeft = std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.direction() == QChar::DirR || character.direction() == QChar::DirAL ||
               character.direction() == QChar::DirAN;
    });
    return rightToLeft ? firstStrongIsolate + text + popDirectionalIsolate : text;
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
        return isolated(day.date() ? QString::fromStdString(_displayFormatter.string(*day.date()))
                                   : QString());
    };
    const auto count = [this](auto number) {
        return isolated(QString::fromStdString(_stepsFormatter.string(number)));
    };
    const auto miles = [this](double number) {
        return isolated(QString::fromStdString(_milesFormatter.string(number)));
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
        setMiles({}, QStringLiteral("Miles: —"));
        setText(_averageLabel, QStringLiteral("Average: —"));
        return;
    }
    // Newest first.
    setText(_fromLabel, QStringLiteral("From: ") + date(steps.back()));
    setText(_toLabel, QStringLiteral("To: ") + date(steps.front()));
    setText(_totalLabel, QStringLiteral("Steps: ") + count(totals.steps()));
    setMiles(QStringLiteral("Miles: %1 @ ").arg(miles(totals.miles())),
             QString::fromStdString(twoDecimals(stride)) + QStringLiteral(" ft/step"));
    setText(_averageLabel, QStringLiteral("Average: %1 steps/day, %2 miles/day")
                               .arg(count(totals.averageSteps()), miles(totals.averageMiles())));
}

// `prefix`: the text before the stride; empty if no stride is shown.
void MainWindowController::setMiles(const QString& prefix, const QString& rest) {
    _milesPrefix = prefix;
    setText(_milesLabel, prefix + rest);
    placeStrideEditor();
}

std::chrono::sys_seconds MainWindowController::startOfDay(std::chrono::sys_seconds date) {
    const auto day = localDate(date);
    if (const auto midnight = ambulet::startOfDay(day)) {
        return *midnight;
    }
    // The day has no midnight. Its first instant is later than `earlier`, which is on an earlier
    // day, and not later than `date`.
    std::chrono::sys_seconds earlier = date - std::chrono::days(2);
    std::chrono::sys_seconds first = date;
    while (first - earlier > std::chrono::seconds(1)) {
        const std::chrono::sys_seconds middle = earlier + (first - earlier) / 2;
        (localDate(middle) == day ? first : earlier) = middle;
    }
    return first;
}

}  // namespace ambulet
