// Measures the time for one record, for the parts of its handling, and for a whole export. Dates
// are in the form that phones write, or in another form.

#include "Ratios.h"
#include "import/ExportReader.h"
#include "import/HealthXMLParser.h"
#include "import/expat/ExpatReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/InputFile.h"
#include "text/InstantReader.h"
#include "text/LocalTime.h"
#include "text/Numbers.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace ambulet {

namespace {

using namespace std::chrono;

// The dates of one day, one for each minute.
std::vector<std::string> dayOfStartDates(const char* offset) {
    std::vector<std::string> dates;
    for (int minute = 0; minute < 24 * 60; ++minute) {
        char text[64];
        std::snprintf(text, sizeof text, "2024-03-09 %02d:%02d:17 %s", minute / 60, minute % 60,
                      offset);
        dates.emplace_back(text);
    }
    return dates;
}

const std::vector<std::string> phoneForm = dayOfStartDates("+0000");
const std::vector<std::string> otherForm = dayOfStartDates("+00:00");

// Calls `once` with each of the texts in turn, repeatedly.
template <typename Call>
void withEach(benchmark::State& state, const std::vector<std::string>& texts, Call once) {
    std::size_t next = 0;
    for (auto unused : state) {
        once(texts[next]);
        next = next + 1 == texts.size() ? 0 : next + 1;
    }
}

void addRecords(benchmark::State& state, const std::vector<std::string>& startDates,
                const char* type) {
    HealthXMLParser parser;
    withEach(state, startDates, [&](const std::string& startDate) {
        const char* const attributes[] = {"type",          type,
                                          "sourceName",    "Phone",
                                          "sourceVersion", "17.3.1",
                                          "device",        "<<HKDevice: 0x1>, name:iPhone>",
                                          "unit",          "count",
                                          "creationDate",  "2024-03-09 12:00:00 +0000",
                                          "startDate",     startDate.c_str(),
                                          "endDate",       "2024-03-09 12:00:00 +0000",
                                          "value",         "117",
                                          nullptr};
        parser.didStartElement("Record", XMLAttributes(attributes));
    });
    benchmark::DoNotOptimize(parser.days());
}

void recordInExactForm(benchmark::State& state) {
    addRecords(state, phoneForm, "HKQuantityTypeIdentifierStepCount");
}
BENCHMARK(recordInExactForm);

void recordInOtherForm(benchmark::State& state) {
    addRecords(state, otherForm, "HKQuantityTypeIdentifierStepCount");
}
BENCHMARK(recordInOtherForm);

void recordOfOtherType(benchmark::State& state) {
    addRecords(state, phoneForm, "HKQuantityTypeIdentifierActiveEnergyBurned");
}
BENCHMARK(recordOfOtherType);

// The work for a step record after its attributes are found: reading the date and the number, and
// finding the day.
void dateAndDay(benchmark::State& state) {
    StepSums sums;
    withEach(state, phoneForm, [&](const std::string& startDate) { sums.add(startDate, "117"); });
    benchmark::DoNotOptimize(sums.days());
}
BENCHMARK(dateAndDay);

void dateByHand(benchmark::State& state) {
    InstantReader reader;
    withEach(state, phoneForm,
             [&](const std::string& text) { benchmark::DoNotOptimize(reader.instant(text)); });
}
BENCHMARK(dateByHand);

void dateByIcu(benchmark::State& state) {
    InstantReader reader;
    withEach(state, otherForm,
             [&](const std::string& text) { benchmark::DoNotOptimize(reader.instant(text)); });
}
BENCHMARK(dateByIcu);

void dayOfAnInstant(benchmark::State& state) {
    sys_seconds instant = sys_days(2024y / March / 9);
    for (auto unused : state) {
        benchmark::DoNotOptimize(localDay(instant));
        instant += 61s;
    }
}
BENCHMARK(dayOfAnInstant);

void value(benchmark::State& state) {
    withEach(state, {"7", "117", "1024", "33"},
             [](const std::string& text) { benchmark::DoNotOptimize(integerValue(text)); });
}
BENCHMARK(value);

class IgnoringDelegate : public XMLReaderDelegate {
    void didStartElement(std::string_view /*name*/, const XMLAttributes& /*attributes*/) override {}
};

InputFile exportFile() {
    std::error_code error;
    auto file = InputFile::open(EXPORT_FILE, error);
    if (!file) {
        throw std::system_error(error, EXPORT_FILE);
    }
    return std::move(*file);
}

std::uint64_t readPlainly(const InputFile& file) {
    std::vector<char> block(ExpatReader::defaultBlockSize);
    std::error_code error;
    std::uint64_t offset = 0;
    while (const std::size_t count = file.read(offset, block, error)) {
        offset += count;
    }
    return offset;
}

template <typename Delegate>
void readThroughExpat(benchmark::State& state) {
    const InputFile file = exportFile();
    const auto size = static_cast<std::int64_t>(readPlainly(file));
    for (auto unused : state) {
        Delegate delegate;
        if (ExpatReader().read(file, delegate)) {
            state.SkipWithError("the export is not well-formed");
        }
    }
    state.SetBytesProcessed(state.iterations() * size);
}
void readDays(benchmark::State& state) {
    readThroughExpat<HealthXMLParser>(state);
}
void readTags(benchmark::State& state) {
    readThroughExpat<IgnoringDelegate>(state);
}
void readDaysFast(benchmark::State& state) {
    const InputFile file = exportFile();
    const auto size = static_cast<std::int64_t>(readPlainly(file));
    for (auto unused : state) {
        HealthXMLParser parser;
        if (parser.parse(file, {.threads = 1})) {
            state.SkipWithError("the export is not well-formed");
        }
    }
    state.SetBytesProcessed(state.iterations() * size);
}
BENCHMARK(readDaysFast)->Unit(benchmark::kMillisecond);
BENCHMARK(readDays)->Unit(benchmark::kMillisecond);
BENCHMARK(readTags)->Unit(benchmark::kMillisecond);

void readBytes(benchmark::State& state) {
    const InputFile file = exportFile();
    std::uint64_t size = 0;
    for (auto unused : state) {
        size += readPlainly(file);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size));
}
BENCHMARK(readBytes)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace ambulet

using namespace ambulet;

int main(int argc, char** argv) {
    return runBenchmarks(
        argc, argv,
        {{"a date: ICU / by hand", "dateByIcu", "dateByHand"},
         {"a record: date in another form / in the phones' form", "recordInOtherForm",
          "recordInExactForm"},
         {"an export: days by expat / by the fast reader", "readDays", "readDaysFast"},
         {"an export: days by expat / start tags only", "readDays", "readTags"},
         {"an export: days by expat / bytes only", "readDays", "readBytes"}});
}
