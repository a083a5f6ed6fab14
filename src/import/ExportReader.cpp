#include "import/ExportReader.h"

#include "import/expat/ExpatPass.h"
#include "import/fast/FastBlocks.h"
#include "import/fast/FastChunks.h"
#include "import/fast/FastScanner.h"
#include "import/steps/StepRecord.h"
#include "import/xml/InputFile.h"
#include "import/xml/PatchedFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
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

/// Whether `byte` is among the first `size` bytes.
bool hasByte(const PatchedFile& bytes, std::uint64_t size, char byte) {
    std::array<char, 4096> block{};
    std::error_code error;
    for (std::uint64_t offset = 0; offset < size;) {
        const std::size_t count = bytes.read(offset, block, error);
        if (count == 0) {
            return true;  // it cannot be told
        }
        const auto wanted =
            static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(count, size - offset));
        if (std::find(block.begin(), block.begin() + wanted, byte) != block.begin() + wanted) {
            return true;
        }
        offset += count;
    }
    return false;
}

bool isEmptyElement(const PatchedFile& bytes, std::uint64_t tagEnd) {
    std::array<char, 1> slash{};
    std::error_code error;
    return bytes.read(tagEnd - 2, slash, error) != 1 || slash[0] == '/';
}

/// The prolog of a document that the fast road may take, with the root's start tag reported; none
/// of any other. `bytes` becomes the file without a malformed document type declaration.
std::optional<Prolog> plainProlog(const InputFile& file, PatchedFile& bytes, Listener& listener,
                                  std::size_t blockSize) {
    Prolog prolog;
    auto pass = std::make_unique<ExpatPass>(bytes, listener, blockSize, ExpatReader::Limits());
    std::optional<XMLError> error = pass->readProlog(prolog);
    if (error && pass->leaveOutDoctype(bytes, file, *error)) {
        pass.reset();  // one parser's memory at a time
        prolog = {};
        error = ExpatPass(bytes, listener, blockSize, {}).readProlog(prolog);
    }
    // A reference to a parameter entity makes expat ignore what is declared after it.
    const bool isPlain = !error && prolog.isPlain && !hasByte(bytes, prolog.end, '%') &&
                         !isEmptyElement(bytes, prolog.end);
    return isPlain ? std::optional(prolog) : std::nullopt;
}

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
    PatchedFile bytes(file);
    const std::optional<Prolog> prolog = plainProlog(file, bytes, listener, _options.blockSize);
    if (!prolog) {
        return readByExpat(file, _options.blockSize, sums);
    }
    const std::uint64_t begin = bytes.fileOffset(prolog->end);
    const FastPlace place = takeFastRoad(file, {begin, {prolog->rootName}}, _options, ownSums);
#ifdef __GLIBC__
    // Otherwise what the fast road has freed stays with the program, and expat's part comes on top.
    malloc_trim(0);
#endif

    // Expat would have kept something of what the fast road has read, but no more than this: two
    // megabytes for the values of its largest tags, half of one for its open elements and its
    // names. Where that could make a difference to what the limits allow, expat reads it all.
    constexpr std::size_t mostKept = std::size_t{3} * 1024 * 1024;
    ExpatReader::Limits limits;
    limits.kept -= mostKept;
    bytes.replace({begin, place.position}, startTags(place.open));
    auto rest = std::make_unique<ExpatPass>(bytes, listener, _options.blockSize, limits);
    std::optional<XMLError> error = rest->run();
    if (error && rest->ranOutOfMemory()) {
        rest.reset();
        return readByExpat(file, _options.blockSize, sums);
    }
    sums.add(ownSums.takeAll());
    return error;
}

}  // namespace ambulet
