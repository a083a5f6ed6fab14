#include "Program.h"
#include "Reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace makeexport {

namespace {

std::string exportOf(const std::string& seed, const std::string& size) {
    const Ended ended = run("--seed " + seed + " --size " + size + " -");
    EXPECT_EQ(ended.status, 0) << ended.err;
    return ended.out;
}

/// A dense export, which is made once for all tests.
const Reading& tenMegabytes() {
    static const Reading reading = readExport(exportOf("1", "10M"));
    return reading;
}

std::set<std::string> distinct(const std::string& attribute) {
    std::set<std::string> values;
    for (const Reading::Record& record : tenMegabytes().records) {
        if (record.attributes.contains(attribute)) {
            values.insert(record.attributes.at(attribute));
        }
    }
    return values;
}

TEST(Export, theSameSeedGivesTheSameBytesAndAnotherSeedOthers) {
    const std::string first = exportOf("1", "1M");
    EXPECT_TRUE(exportOf("1", "1M") == first);
    EXPECT_FALSE(exportOf("2", "1M") == first);
}

TEST(Export, theSizeIsAboutTheRequestedOne) {
    for (const auto& [size, bytes] : {std::pair("64K", 65536.0),
                                      {"300K", 307200.0},
                                      {"777777", 777777.0},
                                      {"10M", 10485760.0}}) {
        const double written = static_cast<double>(exportOf("1", size).size());
        EXPECT_NEAR(written / bytes, 1, 0.03) << size;
    }
    EXPECT_LT(exportOf("1", "1K").size(), 1500U);
}

TEST(Reading, findsEveryKindOfViolation) {
    const std::string document = "<!DOCTYPE a [<!ELEMENT a (b)*><!ELEMENT b EMPTY>"
                                 "<!ATTLIST b x CDATA #REQUIRED y CDATA #IMPLIED>]><a>"
                                 "<c/><b z=''/><b x='' y=''/><b x=''><b x=''/></b></a>";
    const std::set<std::string> expected = {"b has an undeclared z", "b has no x", "b in b",
                                            "c in a"};
    EXPECT_EQ(readExport(document).violations, expected);
}

TEST(Export, exportsOfFourSizesAreValidAgainstTheirOwnDeclarations) {
    for (const char* size : {"64K", "100K", "3M"}) {
        EXPECT_EQ(readExport(exportOf("3", size)).violations, std::set<std::string>()) << size;
    }
    EXPECT_EQ(tenMegabytes().violations, std::set<std::string>());
}

TEST(Export, aSmallExportHasAStepRecordAndDeclaresNoElements) {
    const Reading reading = readExport(exportOf("3", "1K"));
    EXPECT_TRUE(reading.violations.contains("ExportDate in HealthData"));
    EXPECT_NE(sumsOf(reading, "UTC"), "");
}

TEST(Export, theSectionsHaveAFixedOrderAndTheRecordsOfATypeAreTogether) {
    const std::vector<std::string> expected = {"ExportDate",  "Me",      "Record",
                                               "Correlation", "Workout", "ActivitySummary"};
    EXPECT_EQ(tenMegabytes().children, expected);
    std::vector<std::string> types;
    for (const Reading::Record& record : tenMegabytes().records) {
        if (record.parent == "HealthData" &&
            (types.empty() || types.back() != record.attributes.at("type"))) {
            types.push_back(record.attributes.at("type"));
        }
    }
    EXPECT_EQ(types.size(), distinct("type").size());
    EXPECT_GE(types.size(), 15U);
}

TEST(Export, attributesHaveTheOrderThatPhonesWrite) {
    std::set<std::string> orders;
    for (const Reading::Record& record : tenMegabytes().records) {
        orders.insert(record.order);
    }
    const std::string rest = "creationDate startDate endDate value ";
    const std::set<std::string> expected = {"type sourceName sourceVersion device unit " + rest,
                                            "type sourceName sourceVersion unit " + rest,
                                            "type sourceName sourceVersion device " + rest};
    EXPECT_EQ(orders, expected);
}

TEST(Export, theAddressOfADeviceChangesAfterAtMost64Records) {
    std::string before;
    std::map<std::size_t, int> lengths;
    std::size_t length = 0;
    for (const Reading::Record& record : tenMegabytes().records) {
        if (record.attributes.at("type") != "HKQuantityTypeIdentifierHeartRate") {
            continue;
        }
        const std::string& device = record.attributes.at("device");
        EXPECT_EQ(device.find("<<HKDevice: 0x"), 0U);
        EXPECT_EQ(device.substr(23, 20), ">, name:Apple Watch,");
        if (device != before) {
            ++lengths[length];
            length = 0;
        }
        ++length;
        before = device;
    }
    EXPECT_GT(lengths[1], 50);
    EXPECT_GT(lengths.size(), 20U);
    EXPECT_LE(lengths.rbegin()->first, 64U);
}

TEST(Export, thereAreManySystemVersionsAndDevices) {
    EXPECT_GT(distinct("sourceVersion").size(), 100U);
    EXPECT_GT(distinct("device").size(), 2000U);
}

TEST(Export, offsetsFollowTheSeasonsAndJourneys) {
    std::map<std::string, std::set<std::string>> offsets;  // by month
    for (const std::string& date : distinct("startDate")) {
        offsets[date.substr(5, 2)].insert(date.substr(20));
    }
    EXPECT_EQ(offsets["01"], std::set<std::string>{"-0500"});
    EXPECT_EQ(offsets["06"], std::set<std::string>{"-0400"});
    EXPECT_EQ(offsets["07"],
              (std::set<std::string>{"+0200", "+0530", "+0545", "+0900", "-0400", "-1000"}));
}

TEST(Export, coversTenYearsWhetherSmallOrLarge) {
    for (const char* size : {"300K", "10M"}) {
        const std::string sums = sumsOf(readExport(exportOf("1", size)), "America/New_York");
        EXPECT_EQ(sums.substr(0, 5), "2025-") << size;
        EXPECT_NE(sums.find("\n2015-10-0"), std::string::npos) << size;
    }
}

TEST(Export, aDenseExportHasAMedianOf7000To10000StepsADay) {
    std::istringstream sums(run("--size 60M --sums America/New_York=- /dev/null").out);
    std::vector<int> days;
    std::string day;
    for (int steps = 0; sums >> day >> steps;) {
        days.push_back(steps);
    }
    ASSERT_GT(days.size(), 3500U);
    std::ranges::sort(days);
    EXPECT_GT(days[days.size() / 2], 7000);
    EXPECT_LT(days[days.size() / 2], 10000);
}

}  // namespace

}  // namespace makeexport
