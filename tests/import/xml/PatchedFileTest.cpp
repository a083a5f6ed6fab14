#include "import/xml/PatchedFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace ambulet {

namespace {

struct Cut {
    ByteRange range;
    const char* text;
};

// All patched bytes, read `count` at a time, and the offset in the file for each of them and for
// the end.
std::pair<std::string, std::vector<std::uint64_t>> spliced(const std::vector<Cut>& cuts,
                                                           std::size_t count) {
    const TemporaryFolder folder;
    std::error_code error;
    const auto file = InputFile::open(folder.write("file", "0123456789"), error);
    PatchedFile bytes(file.value());
    for (const Cut& cut : cuts) {
        bytes.replace(cut.range, cut.text);
    }
    std::pair<std::string, std::vector<std::uint64_t>> result;
    std::string block(count, '\0');
    while (const std::size_t got = bytes.read(result.first.size(), block, error)) {
        result.first.append(block, 0, got);
    }
    for (std::size_t offset = 0; offset <= result.first.size(); ++offset) {
        result.second.push_back(bytes.fileOffset(offset));
    }
    return result;
}

TEST(PatchedFile, isTheFileIfNothingIsReplaced) {
    for (const std::size_t count : {1U, 3U, 20U}) {
        const auto [text, offsets] = spliced({}, count);
        EXPECT_EQ(text, "0123456789");
        EXPECT_EQ(offsets, (std::vector<std::uint64_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    }
}

TEST(PatchedFile, replacesBytesByText) {
    for (const std::size_t count : {1U, 3U, 20U}) {
        const auto [text, offsets] = spliced({{{1, 3}, ""}, {{5, 8}, "ab"}}, count);
        EXPECT_EQ(text, "034ab89");
        EXPECT_EQ(offsets, (std::vector<std::uint64_t>{0, 3, 4, 8, 8, 8, 9, 10}));
    }
}

}  // namespace

}  // namespace ambulet
