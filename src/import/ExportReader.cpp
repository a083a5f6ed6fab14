#include "import/ExportReader.h"

#include "import/expat/ExpatDocument.h"
#include "import/fast/FastBlocks.h"
#include "import/fast/FastChunks.h"
#include "import/fast/FastScanner.h"
#include "import/steps/StepRecord.h"
#include "import/xml/InputFile.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <string>
#include <thread>
#include <utility>

namespace ambulet {

// Here the two roads meet. The fast one never sees the end of the root element, so it is always
// expat that has the last word: it is given the prolog, a start tag for each open element, and the
// rest of the file.

namespace {

class Listener : public XMLReaderDelegate {
  public:
    explicit Listener(StepSums& sums) : _sums(sums) {}

    void didStartElement(std::string_view name, const XMLAttributes& attributes) override {
        StepRecord::add(_sums, name, attributes);
    }

  private:
    StepSums& _sums;
};

FastPlace takeFastRoad(const InputFile& file, FastPlace start, ExportReader::Options options,
                       StepSums& sums) {
    if (options.threads > 1) {
        return FastChunks(file, options.chunkSize, options.blockSize)
            .read(std::move(start), options.threads, sums);
    }
    FastScanner scanner;
    if (scanner.startIn(start.open)) {
        start.position =
            FastBlocks(file, options.blockSize)
                .read(scanner, start.position, std::numeric_limits<std::uint64_t>::max());
        start.open = scanner.open();
        sums.add(scanner.sums().takeAll());
    }
    return start;
}

/// Start tags of the elements within the root.
std::string startTags(const FastScanner::Names& open) {
    std::string tags;
    for (std::size_t level = 1; level < open.size(); ++level) {
        tags += '<' + open[level] + '>';
    }
    return tags;
}

std::optional<XMLError> readByExpat(const InputFile& file, std::size_t blockSize, StepSums& sums) {
    Listener listener(sums);
    return ExpatReader(blockSize).read(file, listener);
}

}  // namespace

unsigned ExportReader::usualThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

std::optional<XMLError> ExportReader::read(const InputFile& file, StepSums& sums) const {
    StepSums ownSums;
    Listener listener(ownSums);
    ExpatDocument document(file, listener, _options.blockSize);
    const std::optional<PlainProlog> prolog = document.readPlainProlog();
    if (!prolog) {
        const std::optional<XMLError> error = document.read();
        sums.add(ownSums.takeAll());
        return error;
    }
    const FastPlace place =
        takeFastRoad(file, {prolog->end, {prolog->rootName}}, _options, ownSums);
#ifdef __GLIBC__
    // Otherwise what the fast road has freed stays with the program, and expat's part comes on top.
    malloc_trim(0);
#endif

    // Expat would have kept something of what the fast road has read, but no more than this: two
    // megabytes for the values of its largest tags, half of one for its open elements and its
    // names. Where that could make a difference to what the limits allow, expat reads it all.
    constexpr std::size_t mostKept = std::size_t{3} * 1024 * 1024;
    std::optional<XMLError> error =
        document.readFrom(place.position, startTags(place.open), mostKept);
    if (error && error->reason == XMLErrorReason::outOfMemory) {
        return readByExpat(file, _options.blockSize, sums);
    }
    sums.add(ownSums.takeAll());
    return error;
}

}  // namespace ambulet
