// Limits on what a file may contain, which bound the memory of expat.

#include "import/Reading.h"
#include "import/expat/ExpatMemory.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>
#include <tuple>

namespace ambulet {

namespace {

// `begin`, characters that fill up the text to `length` bytes, and `end`.
std::string padded(std::string_view begin, std::string_view end, std::size_t length,
                   char filling = 'x') {
    return std::string(begin) + std::string(length - begin.size() - end.size(), filling) +
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

TEST(Limits, anAttributeOf11MegabytesIsAnError) {
    const std::string tag = padded("<Note text=\"", "\"/>", 11'000'000);
    const std::string bytes = around(tag);
    EXPECT_EQ(readLarge(bytes),
              (Reading{ninth, XMLError{byteOf(bytes, "<Note"), XMLErrorReason::tokenTooLong}}));
}

TEST(Limits, aTagOrCommentMayHaveTenMillionBytesButNotOneMore) {
    for (const auto& [begin, end, filling] :
         {std::tuple("<Note text=\"x\"", "/>", ' '), std::tuple("<!--", "-->", 'x')}) {
        EXPECT_EQ(readLarge(around(padded(begin, end, 10'000'000, filling))), (Reading{both, {}}));
        const std::string bytes = around(padded(begin, end, 10'000'001, filling));
        EXPECT_EQ(readLarge(bytes),
                  (Reading{ninth, XMLError{byteOf(bytes, begin), XMLErrorReason::tokenTooLong}}));
    }
}

TEST(Limits, theValuesOfATagMayHaveNearlyTwoMebibytes) {
    const std::size_t most = std::size_t{2} * 1024 * 1024 - 1000;
    EXPECT_EQ(readLarge(around(padded("<Note text=\"", "\"/>", most))), (Reading{both, {}}));
    const std::string bytes = around(padded("<Note text=\"", "\"/>", most + 2000));
    EXPECT_EQ(readLarge(bytes),
              (Reading{ninth, XMLError{byteOf(bytes, "<Note"), XMLErrorReason::outOfMemory}}));
}

TEST(Limits, memoryThatExpatAlreadyUsesLowersTheLimitOfALongTag) {
    std::string names;
    for (int number = 0; number < 20'000; ++number) {
        names += "<N" + std::to_string(number) + "/>";
    }
    const std::string tag = padded("<Note text=\"", "\"/>", 2'000'000);
    const std::string bytes = around(names + tag);
    EXPECT_EQ(readLarge(bytes),
              (Reading{ninth, XMLError{byteOf(bytes, "<Note"), XMLErrorReason::outOfMemory}}));
}

TEST(Limits, theLimitOfATokenIsExactForTagsCommentsAndInstructions) {
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
                                           XMLErrorReason::tokenTooLong}}))
            << begin;
    }
}

TEST(Limits, aTokenThatDoesNotEndWithinTheLimitIsAnError) {
    const std::string bytes = document(step(noon9, "5") + "<!-- " + std::string(1000, 'x'));
    EXPECT_EQ(read(bytes, tokens(200)),
              (Reading{ninth, XMLError{byteOf(bytes, "<!-- x"), XMLErrorReason::tokenTooLong}}));
}

TEST(Limits, theLimitOfATokenAlsoAppliesBeforeAndAfterTheRoot) {
    const std::string comment = padded("<!--", "-->", 201);
    EXPECT_EQ(read(comment + "<a/>", tokens(200)),
              (Reading{{}, XMLError{0, XMLErrorReason::tokenTooLong}}));
    EXPECT_EQ(read("<a/>" + comment, tokens(200)),
              (Reading{{}, XMLError{4, XMLErrorReason::tokenTooLong}}));
}

TEST(Limits, textAndCdataSectionsMayBeOfAnyLength) {
    EXPECT_EQ(read(around("<Note>" + std::string(5000, 'x') + "</Note>"), tokens(200)),
              (Reading{both, {}}));
    EXPECT_EQ(read(around("<![CDATA[" + std::string(5000, 'x') + "]]>"), tokens(200)),
              (Reading{both, {}}));
    EXPECT_EQ(read(around(std::string(5000, '\n')), tokens(200)), (Reading{both, {}}));
    std::string text;
    text.resize(30'000'000, 'x');
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", around("<Note>" + text + "</Note>"));
    EXPECT_EQ(readFile(path, ExpatReader::defaultBlockSize, kept(100'000)), (Reading{both, {}}));
}

TEST(Limits, expatNeedsLittleMemoryForAHundredThousandRecords) {
    std::string records;
    for (int record = 0; record < 100'000; ++record) {
        records += step(noon9, "1");
    }
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", document(records));
    EXPECT_EQ(readFile(path, 4096, kept(100'000)), (Reading{{{"2024-03-09", 100'000}}, {}}));
}

TEST(Limits, aDocumentThatMakesExpatUseTooMuchMemoryIsAnError) {
    std::string names;
    std::string nesting;
    for (int number = 0; number < 50'000; ++number) {
        names += "<N" + std::to_string(number) + "/>";
        nesting += "<Level>";
    }
    for (const std::string& content : {names, nesting}) {
        const TemporaryFolder folder;
        const auto path = folder.write("export.xml", around(content));
        const Reading reading = readFile(path, 4096, kept(1'000'000));
        ASSERT_TRUE(reading.error);
        EXPECT_EQ(reading.error->reason, XMLErrorReason::outOfMemory);
        EXPECT_EQ(reading.days, ninth);
    }
}

TEST(Limits, aDoctypeThatMakesExpatUseTooMuchMemoryIsIgnored) {
    std::string entities;
    for (int number = 0; number < 50'000; ++number) {
        entities += "<!ENTITY e" + std::to_string(number) + " ''>\n";
    }
    const TemporaryFolder folder;
    const auto path = folder.write("export.xml", "<!DOCTYPE HealthData [" + entities + "]>" +
                                                     around("").substr(39));
    EXPECT_EQ(readFile(path, 4096, kept(1'000'000)), (Reading{both, {}}));
}

// The content has nearly as many open elements, names of attributes, and bytes of long tags as the
// fast reader accepts. If expat had read these, it would still use memory for them, which counts
// towards the limit. ExportReader must lower the limit for the rest of the file by at least as
// much.
TEST(Limits, theMemoryLimitIsTheSameWhicheverReaderReadsTheBeginning) {
    const std::string name(199, 'n');
    std::string content;
    for (int level = 0; level < 98; ++level) {
        content += '<' + name + '>';
    }
    for (int level = 0; level < 98; ++level) {
        content += "</" + name + '>';
    }
    content += "<Note";
    for (int attribute = 0; attribute < 120; ++attribute) {
        content += " a" + std::to_string(attribute) + "=\"" + std::string(1000, 'x') + '"';
    }
    content += "/>";
    for (int tag = 0; tag < 2; ++tag) {
        content += padded("<Note text=\"", "\"/>", 60'000);
    }
    const TemporaryFolder folder;
    const auto write = [&](std::size_t depth) {
        std::string nesting;
        std::string closing;
        for (std::size_t level = 0; level < depth; ++level) {
            nesting += "<Level>";
            closing += "</Level>";
        }
        return folder.write("export.xml", around(content + nesting + closing));
    };
    // Finds the greatest depth that expat alone can read, by bisection.
    std::size_t allowed = 1;
    std::size_t refused = 100'000;
    while (refused - allowed > 1) {
        const std::size_t middle = (allowed + refused) / 2;
        const Reading reading = readFile(write(middle), ExpatReader::defaultBlockSize);
        (reading.error ? refused : allowed) = middle;
    }
    for (const std::size_t depth : {allowed, refused}) {
        const auto path = write(depth);
        const Reading reading = readFile(path, ExpatReader::defaultBlockSize);
        EXPECT_EQ(reading.error.has_value(), depth == refused);
        EXPECT_EQ(readFast(path, {.threads = 1}), reading) << depth;
        EXPECT_EQ(readFast(path, {.threads = 2}), reading) << depth;
    }
}

TEST(Limits, aPrologMayHaveSeveralMegabytes) {
    const std::string comment = padded("<!--", "-->", 3'000'000);
    const std::string entity = "<!DOCTYPE HealthData [" + comment + "<!ENTITY note 'x'>]>";
    const std::string plain = around("&note;").substr(39);
    EXPECT_EQ(readLarge(comment + around("").substr(39)), (Reading{both, {}}));
    EXPECT_EQ(readLarge(entity + plain), (Reading{both, {}}));
    EXPECT_EQ(readLarge("<!DOCTYPE HealthData [" + comment + "<!]>" + around("").substr(39)),
              (Reading{both, {}}));
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

// A size from /proc/self/status, in bytes.
std::size_t memoryField(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == name + ':') {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    ADD_FAILURE() << name;
    return 0;
}

TEST(Limits, severalLongCommentsTakeNoMoreMemoryThanOne) {
    const TemporaryFolder folder;
    std::string file;
    {
        std::ofstream stream(file = folder.write("export.xml", ""), std::ios::binary);
        stream << "<HealthData>" << step(noon9, "5") << std::string(300'000, ' ');
        for (const std::size_t length : {7U, 8U, 9U, 10U, 9U, 8U}) {
            stream << padded("<!--", "-->", length * 1'000'000) << std::string(350'000, ' ');
        }
        stream << step(noon10, "7") << "</HealthData>";
    }
    EXPECT_EQ(readFile(file, ExpatReader::defaultBlockSize), (Reading{both, {}}));
    std::ofstream("/proc/self/clear_refs") << 5;  // resets the peak
    const std::size_t before = memoryField("VmRSS");
    EXPECT_EQ(readFile(file, ExpatReader::defaultBlockSize), (Reading{both, {}}));
    EXPECT_LT(memoryField("VmHWM") - before, 11'000'000);
}

#endif

constexpr std::size_t overhead = ExpatMemory::blockOverhead;

TEST(ExpatMemory, refusesBlocksBeyondTheLimit) {
    const ExpatMemory memory(1000 + 2 * overhead);
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    void* first = functions.malloc_fcn(600);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(functions.malloc_fcn(401), nullptr);
    void* second = functions.malloc_fcn(400);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(functions.realloc_fcn(second, 401), nullptr);

    functions.free_fcn(first);
    functions.free_fcn(nullptr);
    second = functions.realloc_fcn(second, 1000 + overhead);
    ASSERT_NE(second, nullptr);
    second = functions.realloc_fcn(second, 10);
    void* third = functions.realloc_fcn(nullptr, 990);
    EXPECT_NE(third, nullptr);
    functions.free_fcn(second);
    functions.free_fcn(third);
}

TEST(ExpatMemory, aBlockKeepsItsContentsWhenItIsResized) {
    const ExpatMemory memory(10'000'000);
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    auto* block = static_cast<char*>(functions.malloc_fcn(10));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "0123456789", 10);
    for (const std::size_t size : {1000U, 2'000'000U, 4'000'000U, 3'000'000U, 100U, 10U}) {
        block = static_cast<char*>(functions.realloc_fcn(block, size));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(std::string_view(block, 10), "0123456789") << size;
        block[size - 1] = size == 10 ? '9' : 'x';  // the last byte can be written
    }
    functions.free_fcn(block);
}

TEST(ExpatMemory, uncountedBlocksDoNotChangeTheCount) {
    const ExpatMemory memory(1000 + overhead);
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    void* uncounted = nullptr;
    {
        const ExpatMemory::Uncounted scope;
        uncounted = functions.malloc_fcn(5'000'000);
    }
    ASSERT_NE(uncounted, nullptr);
    void* counted = functions.malloc_fcn(1000);
    ASSERT_NE(counted, nullptr);
    functions.free_fcn(uncounted);
    EXPECT_EQ(functions.malloc_fcn(1), nullptr);
    functions.free_fcn(counted);
}

TEST(ExpatMemory, aNestedLimitCountsSeparately) {
    const XML_Memory_Handling_Suite& functions = *ExpatMemory::functions();
    const ExpatMemory outer(10 + overhead);
    {
        const ExpatMemory inner(1000 + overhead);
        functions.free_fcn(functions.malloc_fcn(1000));
    }
    EXPECT_EQ(functions.malloc_fcn(11), nullptr);
    functions.free_fcn(functions.malloc_fcn(10));
}

}  // namespace

}  // namespace ambulet
