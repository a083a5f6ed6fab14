#include "import/HealthXMLParser.h"

#include "import/Reading.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace ambulet {

namespace {

Days parse(std::string_view bytes) {
    const TemporaryFolder folder;
    return asText(HealthXMLParser().parseURL(folder.write("export.xml", bytes)));
}

Days parseContent(std::string_view content) {
    return parse(document(content));
}

TEST(HealthXMLParser, aFileWithoutStepRecordsHasNoDays) {
    EXPECT_EQ(parseContent(""), Days());
    EXPECT_EQ(parse(""), Days());
}

TEST(HealthXMLParser, aFileThatCannotBeOpenedHasNoDays) {
    const TemporaryFolder folder;
    const auto pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::filesystem::path& path : {folder.path() / "none", folder.path(), pipe}) {
        EXPECT_TRUE(HealthXMLParser().parseURL(path).empty());
    }
}

TEST(HealthXMLParser, recordsOfOneDayFromAllSourcesAreAdded) {
    EXPECT_EQ(
        parseContent("<Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"Phone\" "
                     "startDate=\"2024-03-09 12:00:00 +0000\" value=\"100\"/>"
                     "<Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"Watch\" "
                     "startDate=\"2024-03-09 12:00:00 +0000\" value=\"20\"/>"),
        (Days{{"2024-03-09", 120}}));
}

TEST(HealthXMLParser, aRecordCountsOnTheLocalDayOfItsStart) {
    const std::string record = step("2024-03-09 23:30:00 -0800", "5");
    {
        const ScopedTimeZone lagos("Africa/Lagos");
        EXPECT_EQ(parseContent(record), (Days{{"2024-03-10", 5}}));
    }
    const ScopedTimeZone losAngeles("America/Los_Angeles");
    EXPECT_EQ(parseContent(record), (Days{{"2024-03-09", 5}}));
}

TEST(HealthXMLParser, theLeadingWholeNumberOfAValueIsAdded) {
    EXPECT_EQ(parseContent(step(noon9, "1.9")), (Days{{"2024-03-09", 1}}));
    EXPECT_EQ(parseContent(step(noon9, "12") + step(noon9, "-5")), (Days{{"2024-03-09", 7}}));
    EXPECT_EQ(parseContent(step(noon9, "")), (Days{{"2024-03-09", 0}}));
    EXPECT_EQ(parseContent(step(noon9, "abc")), (Days{{"2024-03-09", 0}}));
}

TEST(HealthXMLParser, onlyElementsNamedRecordCount) {
    for (const char* name : {"record", "RECORD", "Records", "Recor", "hk:Record", "Workout"}) {
        EXPECT_EQ(parseContent('<' + std::string(name) +
                               " xmlns:hk=\"urn:x\" type=\"HKQuantityTypeIdentifierStepCount\" "
                               "startDate=\"2024-03-09 12:00:00 +0000\" value=\"5\"/>"),
                  Days())
            << name;
    }
}

TEST(HealthXMLParser, onlyTheStepCountTypeCounts) {
    for (const char* type : {"type=\"HKQuantityTypeIdentifierHeartRate\"",
                             "type=\"hkquantitytypeidentifierstepcount\"",
                             "type=\"HKQuantityTypeIdentifierStepCount \"",
                             "type=\"HKQuantityTypeIdentifierStepCountX\"", "type=\"\"", "",
                             "Type=\"HKQuantityTypeIdentifierStepCount\""}) {
        EXPECT_EQ(parseContent("<Record " + std::string(type) +
                               " startDate=\"2024-03-09 12:00:00 +0000\" value=\"5\"/>"),
                  Days())
            << type;
    }
}

TEST(HealthXMLParser, aRecordCountsAtAnyDepthAndInAnyParent) {
    EXPECT_EQ(parseContent(step(noon9, "1") + "<Correlation>" + step(noon9, "2") + "<Record>" +
                           step(noon9, "4") + "</Record></Correlation>"),
              (Days{{"2024-03-09", 7}}));
    EXPECT_EQ(parse(step(noon9, "8")), (Days{{"2024-03-09", 8}}));
}

TEST(HealthXMLParser, aRecordWithoutAStartOrAValueIsSkipped) {
    EXPECT_EQ(parseContent("<Record type=\"HKQuantityTypeIdentifierStepCount\" value=\"1\"/>"
                           "<Record type=\"HKQuantityTypeIdentifierStepCount\" "
                           "startDate=\"2024-03-09 12:00:00 +0000\"/>" +
                           step("2024-03-09 12:00:00", "2") +
                           step("2024-03-09T12:00:00+0000", "4") + step("", "8") +
                           step(noon10, "7")),
              (Days{{"2024-03-10", 7}}));
}

TEST(HealthXMLParser, theOrderAndTheQuotesOfAttributesMakeNoDifference) {
    EXPECT_EQ(parseContent("<Record value='5' unit=\"count\"\n startDate = "
                           "'2024-03-09 12:00:00 +0000' type='HKQuantityTypeIdentifierStepCount'>"
                           "<MetadataEntry key=\"k\" value=\"100\"/></Record>"),
              (Days{{"2024-03-09", 5}}));
}

TEST(HealthXMLParser, aTruncatedFileKeepsThePartialSumOfItsLastDay) {
    const std::string whole = document(step(noon9, "5") + step(noon10, "3") + step(noon10, "4"));
    EXPECT_EQ(parse(whole.substr(0, whole.rfind("value"))),
              (Days{{"2024-03-10", 3}, {"2024-03-09", 5}}));
}

TEST(HealthXMLParser, thereIsOneResultForEachDayNewestFirst) {
    std::string records;
    for (const char* date :
         {"2024-02-29", "2025-03-01", "2023-12-31", "2024-02-29", "2024-03-01"}) {
        records += step(std::string(date) + " 12:00:00 +0000", "1");
    }
    EXPECT_EQ(parseContent(records),
              (Days{{"2025-03-01", 1}, {"2024-03-01", 1}, {"2024-02-29", 2}, {"2023-12-31", 1}}));
}

TEST(HealthXMLParser, severalParsersCanReadAtTheSameTime) {
    std::string records;
    for (int day = 1; day <= 28; ++day) {
        const std::string date =
            "2024-02-" + std::string(day < 10 ? "0" : "") + std::to_string(day);
        records += step(date + " 12:00:00 +0000", "1") + step(date + " 12:00:00 +00:00", "2");
    }
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", document(records));
    std::vector<DailySteps> results[4];
    {
        std::vector<std::future<void>> threads;
        for (std::vector<DailySteps>& result : results) {
            threads.push_back(
                std::async(std::launch::async, [&] { result = HealthXMLParser().parseURL(path); }));
        }
    }
    for (const std::vector<DailySteps>& result : results) {
        EXPECT_EQ(result.size(), 28U);
        EXPECT_EQ(result, results[0]);
    }
}

TEST(HealthXMLParser, aSecondFileIsAddedToTheFirst) {
    const TemporaryFolder folder;
    HealthXMLParser parser;
    EXPECT_EQ(asText(parser.parseURL(folder.write("1", document(step(noon9, "5"))))),
              (Days{{"2024-03-09", 5}}));
    EXPECT_EQ(
        asText(parser.parseURL(folder.write("2", document(step(noon9, "1") + step(noon10, "7"))))),
        (Days{{"2024-03-10", 7}, {"2024-03-09", 6}}));
    EXPECT_EQ(asText(parser.parseURL(folder.path() / "none")),
              (Days{{"2024-03-10", 7}, {"2024-03-09", 6}}));
}

}  // namespace

}  // namespace ambulet
