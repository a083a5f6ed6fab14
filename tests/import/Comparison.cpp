#include "import/Comparison.h"

#include "import/Reading.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <sstream>

namespace ambulet {

namespace {

using Options = ExportReader::Options;

constexpr std::uintmax_t smallFile = 20'000;
constexpr std::size_t usualBlock = ExpatReader::defaultBlockSize;

constexpr std::size_t smallBlocks[] = {1, 2, 3, 7, 61, 512, 4096};
constexpr std::size_t largeBlocks[] = {4096, 4099, 65'536, 4'000'000};

constexpr Options smallWays[] = {
    {.threads = 1},
    {.threads = 1, .blockSize = 7},
    {.threads = 1, .blockSize = 61},
    {.threads = 1, .blockSize = 100},
    {.threads = 1, .blockSize = 700},
    {.threads = 2, .blockSize = 4096, .chunkSize = 50},
    {.threads = 3, .blockSize = 100, .chunkSize = 700},
    {.threads = 2, .blockSize = 64, .chunkSize = 512},
};
constexpr Options largeWays[] = {
    {.threads = 1},
    {.threads = 1, .blockSize = 4096},
    {.threads = 1, .blockSize = 65'536},
    {.threads = 2},
    {.threads = 2, .chunkSize = 32'768},
    {.threads = 3, .blockSize = 4099, .chunkSize = 65'536},
    {.threads = 2, .blockSize = 4096, .chunkSize = 4096},
};

template <typename List>
const auto& oneOf(const List& list, std::minstd_rand& chance) {
    return list[chance() % std::size(list)];
}

bool isOutOfMemory(const Reading& reading) {
    return reading.error && reading.error->reason == XMLErrorReason::outOfMemory;
}

}  // namespace

std::string compareWays(const std::filesystem::path& path, std::minstd_rand& chance) {
    const bool isSmall = file_size(path) < smallFile;
    const Reading usual = readFile(path, usualBlock);
    std::ostringstream differences;
    const std::size_t otherBlock =
        isSmall ? oneOf(smallBlocks, chance) : oneOf(largeBlocks, chance);
    if (const Reading other = readFile(path, otherBlock); other != usual) {
        // With other blocks, expat may run out of memory a few tags earlier or later.
        if (!isOutOfMemory(usual) || !isOutOfMemory(other)) {
            differences << "expat in blocks of " << otherBlock << ": " << other << '\n';
        }
    }
    const Options firstWay{.threads = 1};
    for (const Options& way :
         {firstWay, isSmall ? oneOf(smallWays, chance) : oneOf(largeWays, chance)}) {
        const Reading reading = readFast(path, way);
        const Reading expected =
            isOutOfMemory(usual) ? readFile(path, std::min(way.blockSize, usualBlock)) : usual;
        if (reading != expected) {
            differences << way.threads << " threads, blocks of " << way.blockSize << ", chunks of "
                        << way.chunkSize << ": " << reading << '\n';
        }
    }
    return differences.str().empty()
               ? ""
               : differences.str() + "expat: " + (std::ostringstream() << usual).str() + '\n';
}

}  // namespace ambulet
