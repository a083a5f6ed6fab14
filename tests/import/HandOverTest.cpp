// The memory limit must refuse the same documents whether expat reads the whole file or continues
// after the fast reader.

#include "import/Reading.h"
#include "import/fast/TagScanner.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace ambulet {

namespace {

/// A tag of `size` bytes with values of random sizes.
std::string tagOf(std::size_t size, std::minstd_rand& chance) {
    std::string tag = "<a";
    for (int attribute = 0; tag.size() + 20 < size; ++attribute) {
        const std::size_t room = size - tag.size() - 20;
        const std::size_t most = chance() % 3 == 0 ? room : std::min<std::size_t>(room, size / 8);
        tag += " b" + std::to_string(attribute) + "=\"" + std::string(chance() % (most + 1), 'x') +
               '"';
    }
    return tag + std::string(size - tag.size() - 2, ' ') + "/>";
}

TEST(HandOver, expatNeedsLittleMemoryForThousandsOfShortTags) {
    std::minstd_rand chance(1);
    std::string tags;
    for (int count = 0; count < 30'000; ++count) {
        tags += tagOf(200 + chance() % (TagScanner::longTag - 200), chance);
    }
    const TemporaryFolder folder;
    ExpatReader::Limits limits;
    limits.kept = 400'000;
    EXPECT_EQ(
        readFile(folder.write("export.xml", around(tags)), ExpatReader::defaultBlockSize, limits),
        (Reading{both, {}}));
}

TEST(HandOver, exportReaderAgreesWithExpatOnRandomLongTags) {
    const TemporaryFolder folder;
    int refused = 0;
    int accepted = 0;
    for (unsigned seed = 1; seed <= 16; ++seed) {
        std::minstd_rand chance(seed);
        std::string tags;
        while (tags.size() < 6'000'000) {
            tags += tagOf(3'000 + chance() % (seed * 150'000), chance) + '\n';
        }
        const auto path = folder.write("export.xml", around(tags));
        const Reading reading = readFile(path, ExpatReader::defaultBlockSize);
        EXPECT_EQ(readFast(path, {.threads = 1}), reading) << seed;
        EXPECT_EQ(readFast(path, {.threads = 2}), reading) << seed;
        ++(reading.error ? refused : accepted);
    }
    // Checks that there are documents on both sides of the limit.
    EXPECT_GT(refused, 1);
    EXPECT_GT(accepted, 1);
}

}  // namespace

}  // namespace ambulet
