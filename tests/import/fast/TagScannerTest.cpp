#include "import/fast/TagScanner.h"

#include "import/Reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

namespace {

/// A step record, with other attributes between the ones that are read.
std::string record(std::string_view source, std::string_view value, std::string_view end = "/>") {
    return " <Record type=\"HKQuantityTypeIdentifierStepCount\" sourceName=\"" +
           std::string(source) + "\" unit=\"count\" startDate=\"" + noon9 + "\" value=\"" +
           std::string(value) + '"' + std::string(end) + '\n';
}

constexpr std::uint64_t noLimit = ~std::uint64_t{0};

/// A record for the end of a text. It does not count, because no markup follows it.
const std::string last = record("Phone", "1000");

class TagScannerTest : public testing::Test {
  protected:
    TagScannerTest() { scanner.startIn({"HealthData"}, noLimit); }

    /// Scans `text`, the next part of the content of the open elements. Returns the number of bytes
    /// accepted.
    std::size_t scan(std::string_view text, std::size_t stop = std::string_view::npos) {
        const std::string bytes = std::string(text) + std::string(TagScanner::padding, '\0');
        const char* const begin = bytes.data();
        return static_cast<std::size_t>(scanner.scan(begin, begin + std::min(stop, text.size())) -
                                        begin);
    }

    /// Scans `text` in blocks. At the start of a block, the scanner empties its cache if that is
    /// full.
    void scanInBlocks(const std::string& text) {
        const std::size_t size = text.size();
        const std::string whole = text + last;
        for (std::size_t begin = 0; begin < size;) {
            const std::size_t count =
                scan(whole.substr(begin, 20000), std::min<std::size_t>(10000, size - begin));
            ASSERT_GT(count, 0U);
            begin += count;
        }
    }

    Days days() {
        StepSums sums;
        sums.add(scanner.sums().takeAll());
        return asText(sums.days());
    }

    TagScanner scanner;
};

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int time = 0; time < times; ++time) {
        result += text;
    }
    return result;
}

using Names = TagScanner::ElementNames;

TEST_F(TagScannerTest, aRecordWithoutATypeDoesNotGetTheTypeOfThePreviousRecord) {
    const std::string untyped = std::string(" <Record startDate=\"") + noon9 + "\" value=\"5\"/>\n";
    scan(record("Phone", "1") + untyped + last);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 1}}));
}

TEST_F(TagScannerTest, aTagWithTwoAttributesOfOneNameIsRefused) {
    const std::string before = record("Phone", "1");
    for (const char* const tag : {"<a b=\"1\" b=\"2\"/>\n", "<a b=\"1\" c=\"2\" b=\"3\"/>\n"}) {
        EXPECT_EQ(scan(before + tag + last), before.size()) << tag;
    }
}

TEST_F(TagScannerTest, aStopInsideCachedMarkupEndsTheScanAtTheNextBoundary) {
    const std::string tag = "<a b=\"\"/>\n";
    const std::string tags = tag + "<c/>\n";
    EXPECT_EQ(scan(repeated(tags, 20), 10 * tags.size() + tag.size() - 1),
              10 * tags.size() + tag.size());
}

TEST_F(TagScannerTest, addsTheRecordsBeforeAnIncompleteTag) {
    const std::string records = record("Phone", "2") + record("Phone", "3");
    EXPECT_EQ(scan(records + "<Rec", records.size()), records.size());
    EXPECT_EQ(days(), ninth);
    EXPECT_EQ(scanner.open(), Names{"HealthData"});
}

TEST_F(TagScannerTest, aRecordCountsOnlyIfTheMarkupAfterItIsAccepted) {
    const std::string one = record("Phone", "5");
    EXPECT_EQ(scan(one + record("Phone", "7")), one.size() + 1)
        << "no markup follows the second record";
    EXPECT_EQ(days(), ninth);
}

TEST_F(TagScannerTest, stopsAtTheFirstBoundaryAtOrAfterTheStop) {
    const std::string one = record("Phone", "5");
    const std::string text = repeated(one, 20);
    for (const std::size_t stop : {one.size() + 1, 7 * one.size() + 1}) {
        EXPECT_EQ(scan(text, stop), stop);
        EXPECT_EQ(scan(text, stop + 1), stop + one.size()) << "at the start of the next tag";
    }
}

TEST_F(TagScannerTest, cachedPiecesDoNotChangeTheSums) {
    std::string text;
    for (int number = 0; number < 50; ++number) {
        text += record(number % 3 == 0 ? "Watch" : "Phone", "1");
        text += " <Record type=\"HKQuantityTypeIdentifierHeartRate\" startDate=\"" +
                std::string(noon9) + "\" value=\"9\">\n  <MetadataEntry key=\"a\" value=\"8\"/>\n" +
                " </Record>\n";
    }
    text += last;
    EXPECT_EQ(scan(text), text.size() - last.size() + 1);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 50}}));
}

TEST_F(TagScannerTest, cachedBytesInAnotherElementAreNotAStepRecord) {
    const std::string known = repeated(record("Phone", "1"), 20);
    std::string other = record("Phone", "1");
    other.replace(other.find("Record"), 6, "Recort");
    // From the type on, all bytes of the tag are those of a step record.
    const std::string text = known + other + record("Phone", "1");
    EXPECT_EQ(scan(text + last), text.size() + 1);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 21}}));
}

TEST_F(TagScannerTest, aDuplicateAttributeIsRefusedInCachedBytesToo) {
    const std::string known = repeated(record("Phone", "1"), 20);
    std::string twice = record("Phone", "1");
    twice.insert(twice.find(" type"), " unit=\"count\"");
    EXPECT_EQ(scan(known + twice), known.size() + 1);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 20}}));
}

TEST_F(TagScannerTest, aMismatchedEndTagIsRefusedInCachedBytesToo) {
    const std::string entry = "  <MetadataEntry key=\"a\" value=\"1\"/>\n </Record>\n";
    const std::string known = repeated(record("Phone", "1", ">") + entry, 20);
    std::string other = record("Phone", "1", ">");
    other.replace(other.find("Record"), 6, "Recort");
    const std::size_t reached = scan(known + other + entry + record("Phone", "1"));
    EXPECT_EQ(reached, (known + other).size() + 2)
        << "before the entry that the wrong end tag follows";
    EXPECT_EQ(days(), (Days{{"2024-03-09", 20}}));
    EXPECT_EQ(scanner.open(), (Names{"HealthData", "Recort"}));
}

TEST_F(TagScannerTest, aValueVerifiedInOtherQuotesIsVerifiedAgain) {
    // The pieces between the tags contain text, so they are not cached: one Piece object stands for
    // all of them.
    const std::string known = repeated("text<a b=\"it's\" c=\"d\"/>", 3);
    const std::string other = "text<a b='it's\" c=\"d\"/>";
    EXPECT_EQ(scan(known + other + last), known.size() + 4);
}

TEST_F(TagScannerTest, longTagsAreRefusedBeyondTheirTotalLimit) {
    const std::string tag = "<a b=\"" + std::string(TagScanner::longTag - 10, 'x') + "\"/>\n";
    const std::string longTag = "<a b=\"" + std::string(TagScanner::longTag, 'x') + "\"/>\n";
    scanner.startIn({"HealthData"}, 3 * longTag.size());
    const std::string accepted = repeated(tag, 10) + repeated(longTag, 3);
    EXPECT_EQ(scan(accepted + longTag + tag), accepted.size());
    EXPECT_GT(scanner.longTagBytes(), 3 * TagScanner::longTag);
    EXPECT_LE(scanner.longTagBytes(), 3 * longTag.size());
}

TEST_F(TagScannerTest, theTypeMayBeSpelledWithReferences) {
    for (const char* type :
         {"HKQuantityTypeIdentifierStepCoun&#116;", "&#72;KQuantityTypeIdentifierStepCount",
          "HKQuantityTypeIdentifierStepCount&#32;", "HKQuantityTypeIdentifierStepCoun&#117;",
          "HKQuantityTypeIdentifierStepCount ", "HKQuantityTypeIdentifierStepCoun"}) {
        std::string text = record("Phone", "1");
        text.replace(text.find("HK"), 33, type);
        scan(text + last);
    }
    EXPECT_EQ(days(), (Days{{"2024-03-09", 2}}));
}

TEST_F(TagScannerTest, theRootsEndTagIsRefused) {
    EXPECT_EQ(scan(last + "</HealthData>"), 1U);
    EXPECT_EQ(scan("<a/></HealthData>"), 0U);
    EXPECT_EQ(days(), Days());
    EXPECT_EQ(scanner.open(), Names{"HealthData"});
}

TEST_F(TagScannerTest, reportsTheElementsClosedAndLeftOpenIfStartedInTheMiddle) {
    scanner.startAnywhere(noLimit);
    const std::string text = "<a b=\"c\"/></x>\n</y><d><e f=\"g\">";
    EXPECT_EQ(scan(text + "<h/>", text.size()), text.size());
    EXPECT_EQ(scanner.closed(), (Names{"x", "y"}));
    EXPECT_EQ(scanner.open(), (Names{"d", "e"}));
}

TEST_F(TagScannerTest, manyDifferentValuesOfAnAttributeAreRead) {
    std::string text;
    for (int number = 0; number < 5000; ++number) {
        text += record("Phone " + std::to_string(number), "1");
    }
    scanInBlocks(text);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 5000}}));
}

TEST_F(TagScannerTest, stepRecordsAmongRecordsOfOtherTypesAreAdded) {
    const std::vector<std::string> sources = {"Phone", "Watch 1", "Watch 2", "a pair of pods"};
    std::mt19937 chance(1);
    std::string text;
    int steps = 0;
    for (int number = 0; number < 30000; ++number) {
        const int value = static_cast<int>(chance() % 1000);
        std::string each = record(sources[chance() % sources.size()], std::to_string(value));
        if (const auto type = chance() % 30; type > 0) {
            each.replace(each.find("StepCount"), 9, "OtherType" + std::to_string(type));
        } else {
            steps += value;
        }
        text += each;
    }
    scanInBlocks(text);
    EXPECT_EQ(days(), (Days{{"2024-03-09", steps}}));
}

TEST_F(TagScannerTest, recordsWithAttributesInRandomOrderAreAdded) {
    std::mt19937 chance(1);
    std::vector<std::string> attributes = {"type=\"HKQuantityTypeIdentifierStepCount\"",
                                           "sourceName=\"Phone\"",
                                           "unit=\"count\"",
                                           "startDate=\"" + std::string(noon9) + '"',
                                           "value=\"2\"",
                                           "device=\"Phone 8\"",
                                           "sourceVersion=\"9.1\""};
    std::string text;
    for (int number = 0; number < 60000; ++number) {
        std::ranges::shuffle(attributes, chance);
        text += "<Record";
        for (const std::string& attribute : attributes) {
            text += ' ' + attribute;
        }
        text += "/>\n";
    }
    scanInBlocks(text);
    EXPECT_EQ(days(), (Days{{"2024-03-09", 120000}}));
}

TEST_F(TagScannerTest, moreAttributeNamesThanTheTableHoldsAreRefused) {
    std::string text;
    for (std::size_t number = 0; number <= NameTable::capacity; ++number) {
        text += "<a b" + std::to_string(number) + "=\"\"/>";
    }
    const std::size_t reached = scan(text);
    EXPECT_LT(reached, text.size());
    EXPECT_EQ(text.substr(reached, 3), "<a ");
}

}  // namespace

}  // namespace ambulet
