#include "import/fast/FileScan.h"

#include "import/Reading.h"
#include "import/xml/InputFile.h"
#include "support/LittleMemory.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>

namespace ambulet {

namespace {

constexpr std::string_view root = "<HealthData>\n";

struct Result {
    std::size_t read = 0;  // the number of bytes of the content that were accepted
    TagScanner::ElementNames open;
    Days days;
};

/// Scans a root element with `content` on three threads, in chunks of a few records. After
/// `content` there is one more record, which is not accepted, because no markup follows it.
Result readInChunks(std::string_view content) {
    constexpr std::size_t chunkSize = 500;
    constexpr std::size_t blockSize = 200;
    const std::string bytes = std::string(root) + std::string(content) + step(noon10, "7");
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("export.xml", bytes), error);
    StepSums sums;
    const FileScan scan{.threads = 3, .blockSize = blockSize, .chunkSize = chunkSize};
    const ScanPlace place = scan.scan(file.value(), {root.size(), {"HealthData"}}, sums);
    return {static_cast<std::size_t>(place.offset) - root.size(), place.open, asText(sums.days())};
}

std::string steps(int count) {
    std::string text;
    for (int index = 0; index < count; ++index) {
        text += step(noon9, "1");
    }
    return text;
}

Days onNinth(int count) {
    return {{"2024-03-09", count}};
}

const TagScanner::ElementNames nothingElse{"HealthData"};

TEST(FileScan, theRecordsOfAllChunksAreAdded) {
    const Result result = readInChunks(steps(200));
    EXPECT_EQ(result.days, onNinth(200));
    EXPECT_EQ(result.read, steps(200).size());
    EXPECT_EQ(result.open, nothingElse);
}

TEST(FileScan, theCallingThreadReadsTheRestIfAnotherHasNoMemory) {
    const LittleMemory none(0);
    const Result result = readInChunks(steps(200));
    EXPECT_EQ(result.days, onNinth(200));
    EXPECT_EQ(result.read, steps(200).size());
    EXPECT_TRUE(none.hasFailed());
}

TEST(FileScan, aScanThatRunsOutOfMemoryIsRightOrThrowsBadAlloc) {
    std::string content;  // a record on each of 240 days, so that merging allocates memory, too
    for (int month = 10; month <= 12; ++month) {
        for (int day = 0; day < 80; ++day) {
            const int year = 2000 + day / 20;
            content += step(std::to_string(year) + '-' + std::to_string(month) + '-' +
                                std::to_string(10 + day % 20) + " 12:00:00 +0000",
                            "1");
        }
    }
    const Days expected = readInChunks(content).days;
    ASSERT_EQ(expected.size(), 240U);
    int right = 0;
    for (int allocations = 0; allocations < 400; ++allocations) {
        const LittleMemory little(allocations);
        try {
            EXPECT_EQ(readInChunks(content).days, expected);
            ++right;
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(little.hasFailed());
        }
    }
    EXPECT_GT(right, 0);
}

TEST(FileScan, theScanEndsBeforeTheRootsEndTag) {
    const Result result = readInChunks(steps(200) + "</HealthData>\n");
    EXPECT_EQ(result.days, onNinth(199))
        << "the last record does not count, because the end tag after it is refused";
    EXPECT_EQ(result.read, steps(199).size());
}

TEST(FileScan, elementsMaySpanChunks) {
    const Result result =
        readInChunks("<a>\n<b>\n" + steps(100) + "</b>\n" + steps(100) + "<c>\n" + steps(50));
    EXPECT_EQ(result.days, onNinth(250));
    EXPECT_EQ(result.open, (TagScanner::ElementNames{"HealthData", "a", "c"}));
}

TEST(FileScan, aWrongEndTagEndsTheScanAndLaterChunksAreNotAdded) {
    const std::string before = "<a>\n" + steps(100);
    const Result result = readInChunks(before + "<a b=\"\">\n</b>\n" + steps(100) + "</b>\n");
    EXPECT_EQ(result.read, before.size());
    EXPECT_EQ(result.days, onNinth(100));
    EXPECT_EQ(result.open, (TagScanner::ElementNames{"HealthData", "a"}));
}

TEST(FileScan, anEndTagMustMatchTheElementOpenedInAnEarlierChunk) {
    const Result result = readInChunks("<a>\n" + steps(100) + "</b>\n" + steps(100));
    // The last record before the end tag does not count, because that tag is refused.
    EXPECT_EQ(result.days, onNinth(99));
    EXPECT_EQ(result.read, ("<a>\n" + steps(99)).size());
    EXPECT_EQ(result.open, (TagScanner::ElementNames{"HealthData", "a"}));
}

TEST(FileScan, recordsInACommentOrCdataSectionThatSpansChunksAreNotCounted) {
    for (const auto& [begin, end] : {std::pair("<!--\n", "-->\n"), {"<![CDATA[\n", "]]>\n"}}) {
        const std::string content = steps(100) + begin + steps(100) + end + steps(100);
        const Result result = readInChunks(content);
        EXPECT_EQ(result.days, onNinth(200)) << begin;
        EXPECT_EQ(result.read, content.size());
    }
}

TEST(FileScan, chunksThatStartInCommentsDoNotChangeTheResult) {
    std::string content;
    for (int times = 0; times < 100; ++times) {
        content += steps(1) + "<!--\n" + steps(8) + "-->\n";
    }
    const Result result = readInChunks(content);
    EXPECT_EQ(result.days, onNinth(100));
    EXPECT_EQ(result.read, content.size());
}

TEST(FileScan, aTagMayBeLongerThanAChunk) {
    const std::string content =
        steps(10) + "<a b=\"" + std::string(3000, 'c') + "\"/>\n" + steps(100);
    const Result result = readInChunks(content);
    EXPECT_EQ(result.days, onNinth(110));
    EXPECT_EQ(result.read, content.size());
}

TEST(FileScan, theScanEndsBeforeMarkupThatIsRefused) {
    const std::string before = steps(100) + "<a/>\n";
    const Result result = readInChunks(before + "<b c=\"&d;\"/>\n" + steps(100));
    EXPECT_EQ(result.days, onNinth(100));
    EXPECT_EQ(result.read, before.size());
}

TEST(FileScan, theScanEndsAtTheMaximumDepthOfAScanner) {
    std::string content;
    for (int level = 0; level < 300; ++level) {
        content += "<a>\n" + steps(2);
    }
    const Result result = readInChunks(content);
    EXPECT_EQ(result.open.size(), TagScanner::deepest);
    // The last record before the refused tag does not count.
    EXPECT_EQ(result.days, onNinth(2 * (static_cast<int>(TagScanner::deepest) - 1) - 1));
}

TEST(FileScan, theBytesOfLongTagsAreSummedOverAllChunks) {
    const std::string longTag = "<a b=\"" + std::string(TagScanner::longTag, 'x') + "\"/>\n";
    std::string content;
    for (int count = 0; count < 6; ++count) {
        content += longTag + step(noon9, "1") + step(noon9, "1");
    }
    const TemporaryFolder folder;
    std::error_code error;
    const auto file =
        InputFile::open(folder.write("export.xml", std::string(root) + content), error);
    for (const unsigned threads : {1U, 3U}) {
        for (const std::size_t chunkSize : {20'000U, 500'000U}) {
            StepSums sums;
            const FileScan scan{.threads = threads,
                                .blockSize = 50'000,
                                .chunkSize = chunkSize,
                                .mostLongTagBytes = 4 * longTag.size()};
            const ScanPlace place = scan.scan(file.value(), {root.size(), {"HealthData"}}, sums);
            EXPECT_EQ(place.offset - root.size(), content.find(longTag, 4 * content.size() / 6))
                << threads;
            EXPECT_EQ(asText(sums.days()), onNinth(8)) << threads;
        }
    }
}

TEST(FileScan, anEmptyContentCanBeScanned) {
    const Result result = readInChunks("");
    EXPECT_EQ(result.days, Days());
    EXPECT_EQ(result.read, 0U);
    EXPECT_EQ(result.open, nothingElse);
}

}  // namespace

}  // namespace ambulet
