// bench_window EXPORT: measures how long the main thread is busy
// - with single updates, while the table has the days of 40 years, and
// - while EXPORT, of about a gigabyte, is loaded.
//
// Prints for each the median and the longest time, and the longest time divided by a limit. The
// window is drawn in memory.

#include "mainwindow/MainWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

using namespace ambulet;

namespace {

constexpr double updateLimitMs = 16;
constexpr double eventLimitMs = 50;

void print(const char* what, std::vector<double> times, double limit) {
    std::sort(times.begin(), times.end());
    std::printf("%-44s %8.2f ms %8.2f ms %8.2f of %2.0f ms\n", what, times[times.size() / 2],
                times.back(), times.back() / limit, limit);
}

double milliseconds(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Writes an export with one record a day for 40 years. Returns its path; empty on failure.
QString writeFortyYears(const QTemporaryDir& folder) {
    QFile file(folder.filePath(QStringLiteral("forty-years.xml")));
    if (!file.open(QIODevice::WriteOnly)) {
        return {};
    }
    file.write("<HealthData>\n");
    using namespace std::chrono_literals;
    const std::chrono::sys_days last = 2025y / 12 / 31;
    for (std::chrono::sys_days day = 1986y / 1 / 1; day <= last; day += std::chrono::days(1)) {
        const std::chrono::year_month_day date = day;
        file.write(QStringLiteral("<Record type=\"HKQuantityTypeIdentifierStepCount\" "
                                  "startDate=\"%1-%2-%3 12:00:00 +0000\" value=\"%4\"/>\n")
                       .arg(static_cast<int>(date.year()))
                       .arg(static_cast<unsigned>(date.month()), 2, 10, QLatin1Char('0'))
                       .arg(static_cast<unsigned>(date.day()), 2, 10, QLatin1Char('0'))
                       .arg(2000 + day.time_since_epoch().count() * 7919 % 14000)
                       .toUtf8());
    }
    file.write("</HealthData>\n");
    return file.fileName();
}

bool waitForLoad(const MainWindowController& controller) {
    return QTest::qWaitFor(
        [&controller] {
            return controller.statusLabel()->text().startsWith(QLatin1String("Loaded"));
        },
        120000);
}

void benchTable(MainWindowController& controller) {
    TableView& table = *controller.tableView();
    table.setFocus();
    std::printf("%zu days in %d rows\n", controller.allSteps().size(), table.model()->rowCount());
    const auto draw = [&table] { table.viewport()->repaint(); };

    QCoreApplication::processEvents();  // lays out the table
    std::vector<double> scrolls;
    QScrollBar& bar = *table.verticalScrollBar();
    const int step = std::max(1, bar.maximum() / 500);
    for (int value = 0; value <= bar.maximum(); value += step) {
        scrolls.push_back(milliseconds([&] {
            bar.setValue(value);
            draw();
        }));
    }
    print("scrolling to another page", scrolls, updateLimitMs);

    std::vector<double> selections;
    std::vector<double> clearings;
    std::vector<double> statistics;
    for (int round = 0; round < 50; ++round) {
        selections.push_back(milliseconds([&] {
            QTest::keySequence(&table, QKeySequence::SelectAll);
            draw();
        }));
        statistics.push_back(milliseconds([&] { controller.recomputeStats(); }));
        clearings.push_back(milliseconds([&] {
            QTest::keyClick(&table, Qt::Key_Escape);
            draw();
        }));
    }
    print("selecting all days, with their statistics", selections, updateLimitMs);
    print("the statistics alone, with all days selected", statistics, updateLimitMs);
    print("clearing the selection, with statistics", clearings, updateLimitMs);
}

// Another thread posts an event every two milliseconds. Measures the time that each event waits.
void benchLoading(MainWindowController& controller) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> waits;
    std::atomic<bool> loading = true;
    std::thread sender([&] {
        while (loading) {
            const Clock::time_point sent = Clock::now();
            QMetaObject::invokeMethod(
                qApp,
                [&waits, sent] {
                    waits.push_back(
                        std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
                },
                Qt::QueuedConnection);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    const double total = milliseconds([&] { waitForLoad(controller); });
    loading = false;
    sender.join();
    QCoreApplication::processEvents();
    std::printf("a load of %.0f ms: %s\n", total, qPrintable(controller.statusLabel()->text()));
    print("an event's wait while a file is loaded", waits, eventLimitMs);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: bench_window EXPORT\n", stderr);
        return 2;
    }
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(QStringLiteral("settings.ini")));
    std::printf("%-44s %11s %11s\n", "", "median", "longest");
    {
        defaults.setString(SettingsKeys::xmlFilePath, writeFortyYears(folder));
        MainWindowController controller(defaults, Bundle::main());
        controller.showWindow();
        if (!waitForLoad(controller)) {
            return 1;
        }
        benchTable(controller);
    }
    {
        defaults.setString(SettingsKeys::xmlFilePath, arguments[1]);
        MainWindowController controller(defaults, Bundle::main());
        controller.showWindow();
        benchLoading(controller);
    }
    return 0;
}
