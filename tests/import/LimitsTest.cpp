// Memory is bounded whatever a file holds.

#include "import/ExpatMemory.h"
#include "import/Reading.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// `begin`, so many more characters that it all comes to `length` bytes, and `end`.
std::string padded(std::string_view begin, std::string_view end, std::size_t length) {
    return std::string(begin) + std::string(length - begin.size() - end.size(), 'x') +
           std::string(end);
}

ExpatReader::Limits tokens(std::size_t bytes) {
    ExpatReader::Limits limits;
    limits.token = bytes;
    return limits;
}

ExpatReader::Limits kept(std::size_t bytes) {
    ExpatReader::Limits limits;
    limits.kept = bytes;
    return limits;
}

ExpatReader::Limits memory(std::size_t bytes) {
    ExpatReader::Limits limits;
    limits.memory = bytes;
    return limits;
}

TEST(Limits, anAttributeOf11MegabytesStops) {
    const std::string tag = padded("<Note text=\"", "\"/>", 11'000'000);
    const std::string bytes = around(tag);
    EXPECT_EQ(readLarge(bytes),
              (Reading{ninth, XMLError{byteOf(bytes, "<Note"), "token too long"}}));
}

TEST(Limits, aTagMayHaveTenMillionBytesAndNotOneMore) {
    EXPECT_EQ(readLarge(around(padded("<Note text=\"", "\"/>", 10'000'000))), (Reading{both, {}}));
    const std::string bytes = around(padded("<Note text=\"", "\"/>", 10'000'001));
    EXPECT_EQ(readLarge(bytes),
              (Reading{ninth, XMLError{byteOf(bytes, "<Note"), "token too long"}}));
}

TEST(Limits, holdToTheByteForEveryKindOfTokenAndEveryBlockSize) {
    const std::size_t limit = 200;
    for (const auto& [begin, end] :
         {std::pair("<Note text=\"", "\"/>"), std::pair("<Note text=\"", "\"></Note>"),
          std::pair("<", "/>"), std::pair("<!--", "-->"), std::pair("<?note ", "?>")}) {
        const std::size_t closing = std::string_view(end) == "\"></Note>" ? 7 : 0;
        EXPECT_EQ(read(around(padded(begin, end, limit + closing)), tokens(limit)),
                  (Reading{both, {}}))
            << begin;
        const std::string bytes = around(padded(begin, end, limit + closing + 1));
        EXPECT_EQ(read(bytes, tokens(limit)),
                  (Reading{ninth, XMLError{byteOf(bytes, padded(begin, end, limit + closing + 1)),
                                           "token too long"}}))
            << begin;
    }
}

TEST(Limits, aTokenWithoutAnEndStopsAtTheLimit) {
    const std::string bytes = document(step(noon9, "5") + "<!-- " + std::string(1000, 'x'));
    EXPECT_EQ(read(bytes, tokens(200)),
              (Reading{ninth, XMLError{byteOf(bytes, "<!-- x"), "token too long"}}));
}

TEST(Limits, ofATokenHoldBeforeAndAfterTheRootToo) {
    const std::string comment = padded("<!--", "-->", 201);
    EXPECT_EQ(read(comment + "<a/>", tokens(200)), (Reading{{}, XMLError{0, "token too long"}}));
    EXPECT_EQ(read("<a/>" + comment, tokens(200)), (Reading{{}, XMLError{4, "token too long"}}));
}

TEST(Limits, textAndCdataHaveNone) {
    EXPECT_EQ(read(around("<Note>" + std::string(5000, 'x') + "</Note>"), tokens(200)),
              (Reading{both, {}}));
    EXPECT_EQ(read(around("<![CDATA[" + std::string(5000, 'x') + "]]>"), tokens(200)),
              (Reading{both, {}}));
    EXPECT_EQ(read(around(std::string(5000, '\n')), tokens(200)), (Reading{both, {}}));
    std::string text;
    text.resize(30'000'000, 'x');
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", around("<Note>" + text + "</Note>"));
    EXPECT_EQ(readFile(path, ExpatReader::defaultBlockSize, memory(2'000'000)),
              (Reading{both, {}}));
}

TEST(Limits, memoryDoesNotGrowWithTheNumberOfRecords) {
    std::string records;
    for (int record = 0; record < 100'000; ++record) {
        records += step(noon9, "1");
    }
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", document(records));
    EXPECT_EQ(readFile(path, 4096, memory(200'000)), (Reading{{{"2024-03-09", 100'000}}, {}}));
}

TEST(Limits, aDocumentThatMakesExpatKeepTooMuchStops) {
    std::string names;
    std::string nesting;
    std::string entities;
    for (int number = 0; number < 50'000; ++number) {
        names += "<N" + std::to_string(number) + "/>";
        nesting += "<Level>";
        entities += "<!ENTITY e" + std::to_string(number) + " ''>\n";
    }
    for (const std::string& content : {names, nesting}) {
        const TemporaryFolder folder;
        const auto path = folder.write("export.xml", around(content));
        for (const ExpatReader::Limits& limits : {memory(1'000'000), kept(1'000'000)}) {
            const Reading reading = readFile(path, 4096, limits);
            ASSERT_TRUE(reading.error);
            EXPECT_EQ(reading.error->reason, "out of memory");
            EXPECT_EQ(reading.days, ninth);
        }
    }
    // What a declaration makes it keep is given up with the declaration.
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", "<!DOCTYPE HealthData [" + entities + "]>" +
                                                     around("").substr(39));
    EXPECT_EQ(readFile(path, 4096, memory(1'000'000)), (Reading{both, {}}));
}

TEST(Limits, ofMemoryLeaveRoomForTheLongestTag) {
    EXPECT_EQ(readLarge(around(padded("<", "/>", 10'000'000))), (Reading{both, {}}));
    EXPECT_EQ(readLarge(around(padded("<!--", "-->", 10'000'000))), (Reading{both, {}}));
}

TEST(ExpatMemory, refusesWhatGoesBeyondTheLimit) {
    const ExpatMemory memory({1000, 1000});
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    void* first = functions.malloc_fcn(600);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(functions.malloc_fcn(401), nullptr);
    void* second = functions.malloc_fcn(400);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(functions.realloc_fcn(second, 401), nullptr);

    functions.free_fcn(first);
    functions.free_fcn(nullptr);
    second = functions.realloc_fcn(second, 1000);
    ASSERT_NE(second, nullptr);
    second = functions.realloc_fcn(second, 10);
    void* third = functions.realloc_fcn(nullptr, 990);
    EXPECT_NE(third, nullptr);
    functions.free_fcn(second);
    functions.free_fcn(third);
}

TEST(ExpatMemory, smallBlocksHaveALimitOfTheirOwn) {
    const std::size_t large = ExpatMemory::largeBlock;
    const ExpatMemory memory({10 * large, 100});
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    void* block = functions.malloc_fcn(100);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(functions.malloc_fcn(1), nullptr);
    void* other = functions.malloc_fcn(large);
    ASSERT_NE(other, nullptr);

    block = functions.realloc_fcn(block, large);
    void* small = functions.malloc_fcn(100);
    EXPECT_NE(small, nullptr) << "the first is no small one any more";
    EXPECT_EQ(functions.realloc_fcn(block, large - 1), nullptr);
    functions.free_fcn(small);
    functions.free_fcn(block);
    functions.free_fcn(other);
}

TEST(ExpatMemory, anInnerLimitIsOnItsOwn) {
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    const ExpatMemory outer({10, 10});
    {
        const ExpatMemory inner({1000, 1000});
        functions.free_fcn(functions.malloc_fcn(1000));
    }
    EXPECT_EQ(functions.malloc_fcn(11), nullptr);
    functions.free_fcn(functions.malloc_fcn(10));
}

}  // namespace
