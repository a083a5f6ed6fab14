#include "makeexport/Export.h"

#include "Lines.h"
#include "Reading.h"
#include "Validity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace makeexport {

namespace {

constexpr std::uint64_t kilobyte = 1024;
constexpr std::uint64_t megabyte = 1024 * kilobyte;

std::string exportOf(std::uint64_t seed, std::uint64_t size, StepSums& sums) {
    std::string text;
    Output out([&](std::string_view block) {
        text += block;
        return std::error_code();
    });
    writeExport(seed, size, out, sums);
    EXPECT_FALSE(out.error());
    EXPECT_EQ(out.size(), text.size());
    return text;
}

std::string exportOf(std::uint64_t seed, std::uint64_t size) {
    StepSums sums;
    return exportOf(seed, size, sums);
}

/// Read once for all tests that look at a dense export.
const Reading& tenMegabytes() {
    static const Reading reading = readExport(exportOf(1, 10 * megabyte));
    return reading;
}

TEST(Export, theSameSeedGivesTheSameBytesAndAnotherOneOthers) {
    const std::string first = exportOf(1, megabyte);
    EXPECT_TRUE(exportOf(1, megabyte) == first);
    EXPECT_FALSE(exportOf(2, megabyte) == first);
}

TEST(Export, theSizeIsMetWithinASummary) {
    for (const std::uint64_t size :
         {64 * kilobyte, 100 * kilobyte, std::uint64_t{777'777}, megabyte, 10 * megabyte}) {
        for (std::uint64_t seed = 1; seed <= 5; ++seed) {
            const std::uint64_t written = exportOf(seed, size).size();
            EXPECT_LE(written, size);
            EXPECT_GT(written + 300, size) << size << " seed " << seed;
        }
    }
}

TEST(Export, theSizeOfASmallExportIsMetWithinARecord) {
    for (std::uint64_t size = kilobyte; size < 64 * kilobyte; size += size / 3) {
        for (std::uint64_t seed = 1; seed <= 20; ++seed) {
            const std::uint64_t written = exportOf(seed, size).size();
            EXPECT_LE(written, size);
            EXPECT_GT(written + 500, size) << size << " seed " << seed;
        }
    }
}

TEST(Export, everySizeIsWellFormed) {
    for (const std::uint64_t size : {kilobyte, 2 * kilobyte, 5 * kilobyte, 30 * kilobyte,
                                     64 * kilobyte, 300 * kilobyte, 3 * megabyte}) {
        EXPECT_EQ(readExport(exportOf(3, size)).error, "") << size;
    }
    EXPECT_EQ(tenMegabytes().error, "");
}

TEST(Export, theSmallestHasThePrologAndAStepRecord) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        const std::string text = exportOf(seed, kilobyte);
        EXPECT_EQ(text.find("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE HealthData [\n"
                            "<!-- HealthKit Export Version: 14 -->\n]>\n<HealthData locale="),
                  0U);
        const Reading reading = readExport(text);
        EXPECT_EQ(reading.elements.at("ExportDate"), 1);
        EXPECT_EQ(reading.elements.at("Me"), 1);
        EXPECT_GE(reading.steps.size(), 1U);
    }
}

TEST(Export, itIsValidAgainstItsOwnDeclarations) {
    for (const std::uint64_t size : {64 * kilobyte, 10 * megabyte}) {
        EXPECT_EQ(violations(exportOf(1, size)), std::vector<std::string>());
    }
}

TEST(Export, theRecordsComeFirstAndTheSummariesLast) {
    const std::vector<std::string> expected = {"ExportDate",  "Me",      "Record",
                                               "Correlation", "Workout", "ActivitySummary"};
    EXPECT_EQ(tenMegabytes().children, expected);
}

TEST(Export, theRecordsAreGroupedByThirtyTypesOrMore) {
    const std::vector<std::string>& runs = tenMegabytes().recordTypes;
    EXPECT_GE(runs.size(), 30U);
    EXPECT_EQ(runs.size(), tenMegabytes().topLevelTypes.size());
}

TEST(Export, theTypesHaveTheirLifelikeShares) {
    const auto& types = tenMegabytes().topLevelTypes;
    double all = 0;
    for (const auto& [type, number] : types) {
        all += number;
    }
    const auto percent = [&](const char* type) {
        return 100 * types.at(std::string("HKQuantityTypeIdentifier") + type) / all;
    };
    EXPECT_NEAR(percent("StepCount"), 8, 1.5);
    EXPECT_NEAR(percent("ActiveEnergyBurned"), 32, 1.5);
    EXPECT_NEAR(percent("HeartRate"), 15, 1.5);
    EXPECT_NEAR(percent("BasalEnergyBurned"), 15, 1.5);
}

TEST(Export, aRecordHasAbout420Bytes) {
    double records = 0;
    for (const auto& [type, number] : tenMegabytes().topLevelTypes) {
        records += number;
    }
    // The prolog, the workouts and the summaries are two bytes in a hundred.
    EXPECT_NEAR(0.98 * 10 * megabyte / records, 420, 15);
}

TEST(Export, attributesStandInTheOrderOfAPhone) {
    const std::string order = " type sourceName sourceVersion device unit creationDate startDate "
                              "endDate value ";
    const std::vector<std::string>& found = tenMegabytes().attributeOrders;
    EXPECT_EQ(std::ranges::count(found, order.substr(1, order.size() - 2)), 1);
    for (const std::string& attributes : found) {
        std::size_t last = 0;
        std::istringstream names(attributes);
        for (std::string name; names >> name;) {
            const std::size_t place = order.find(' ' + name + ' ');
            ASSERT_NE(place, std::string::npos) << name;
            EXPECT_GE(place, last) << attributes;
            last = place;
        }
    }
}

TEST(Export, thereIsAllThatAPhoneWritesBesides) {
    for (const char* name :
         {"MetadataEntry", "HeartRateVariabilityMetadataList", "InstantaneousBeatsPerMinute",
          "Correlation", "Workout", "WorkoutEvent", "WorkoutStatistics", "WorkoutRoute",
          "FileReference", "ActivitySummary"}) {
        EXPECT_TRUE(tenMegabytes().elements.contains(name)) << name;
    }
}

TEST(Export, sourceNamesHaveCharactersOfAllKinds) {
    std::string names;
    for (const std::string& name : tenMegabytes().sourceNames) {
        names += name + '\n';
    }
    EXPECT_GE(tenMegabytes().sourceNames.size(), 5U);
    for (const char* part : {"\u2019", "\u00a0", "ë", "ß", "&", "日"}) {
        EXPECT_NE(names.find(part), std::string::npos) << part;
    }
}

TEST(Export, devicesAreNamedWithTheirAddress) {
    const std::string text = exportOf(1, megabyte);
    const std::string begin = " device=\"&lt;&lt;HKDevice: 0x";
    const std::string end = "&gt;, name:iPhone, manufacturer:Apple Inc., model:iPhone, hardware:";
    const std::size_t address = text.find(begin) + begin.size();
    const std::size_t phone = text.find(end);
    ASSERT_NE(phone, std::string::npos);
    EXPECT_EQ(text.substr(phone - 9 - begin.size(), begin.size()), begin);
    for (const std::size_t digits : {address, phone - 9}) {
        EXPECT_EQ(text.substr(digits, 9).find_first_not_of("0123456789abcdef"), std::string::npos);
    }
}

TEST(Export, someStepRecordsStandInACorrelationAndAtTopLevel) {
    const std::vector<Reading::StepRecord>& steps = tenMegabytes().steps;
    int repeated = 0;
    for (const Reading::StepRecord& inner : steps) {
        if (inner.parent == "Correlation") {
            ++repeated;
            EXPECT_EQ(std::ranges::count_if(steps,
                                            [&](const Reading::StepRecord& outer) {
                                                return outer.parent == "HealthData" &&
                                                       outer.startDate == inner.startDate &&
                                                       outer.value == inner.value;
                                            }),
                      1);
        }
    }
    EXPECT_GE(repeated, 5);
}

TEST(Export, offsetsFollowDaylightSavingAndTravel) {
    int january = 0;
    int january0500 = 0;
    int july = 0;
    int july0400 = 0;
    std::set<std::string> offsets;
    for (const Reading::StepRecord& record : tenMegabytes().steps) {
        const std::string offset = record.startDate.substr(20);
        const std::string month = record.startDate.substr(5, 2);
        january += month == "01" ? 1 : 0;
        january0500 += month == "01" && offset == "-0500" ? 1 : 0;
        july += month == "07" ? 1 : 0;
        july0400 += month == "07" && offset == "-0400" ? 1 : 0;
        offsets.insert(offset);
    }
    EXPECT_GT(january0500, january * 3 / 4);
    EXPECT_GT(july0400, july * 3 / 4);
    EXPECT_GE(offsets.size(), 4U);
}

TEST(Export, itSpansTheTenYearsWhateverTheSize) {
    for (const std::uint64_t size : {300 * kilobyte, 10 * megabyte}) {
        const Reading reading = readExport(exportOf(1, size));
        ASSERT_FALSE(reading.steps.empty());
        EXPECT_EQ(reading.steps.front().startDate.substr(0, 10), "2015-10-01");
        const auto last = std::ranges::max(reading.steps, {}, &Reading::StepRecord::startDate);
        EXPECT_EQ(last.startDate.substr(0, 4), "2025") << size;
    }
}

TEST(Export, aDenseExportHasLifelikeDays) {
    Output nowhere([](std::string_view) { return std::error_code(); });
    StepSums sums;
    writeExport(1, 60 * megabyte, nowhere, sums);
    std::vector<std::int64_t> days;
    for (const DaySum& sum : sums.byDay("America/New_York")) {
        days.push_back(sum.steps);
    }
    // Of 3653 days one in fifty is without steps.
    EXPECT_GT(days.size(), 3500U);
    EXPECT_LT(days.size(), 3653U);
    std::ranges::sort(days);
    EXPECT_GT(days[days.size() / 2], 7000);
    EXPECT_LT(days[days.size() / 2], 10000);
    const auto lifelike = std::ranges::count_if(
        days, [](std::int64_t steps) { return steps >= 2000 && steps <= 20000; });
    EXPECT_GT(static_cast<double>(lifelike), 0.99 * static_cast<double>(days.size()));
}

TEST(Export, theSumsAreWhatTheRecordsSay) {
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        StepSums sums;
        const Reading reading = readExport(exportOf(seed, 2 * megabyte, sums));
        EXPECT_GT(reading.steps.size(), 300U);
        for (const char* zone : {"UTC", "America/New_York", "Asia/Kolkata"}) {
            EXPECT_EQ(firstDifference(sumLines(sums.byDay(zone)), sumsOf(reading.steps, zone)), "")
                << seed << " " << zone;
        }
    }
}

TEST(Export, anOutputThatFailsEndsItSoon) {
    Output full([](std::string_view) { return std::make_error_code(std::errc::io_error); });
    StepSums sums;
    writeExport(1, std::uint64_t{8} << 30, full, sums);
    EXPECT_EQ(full.error(), std::errc::io_error);
    EXPECT_LT(full.size(), 3 * megabyte);
}

}  // namespace

}  // namespace makeexport
