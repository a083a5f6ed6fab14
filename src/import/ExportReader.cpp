#include "import/ExportReader.h"

#include "import/expat/ExpatDocument.h"
#include "import/fast/FileScan.h"
#include "import/xml/InputFile.h"

#include <algorithm>
#include <cstdint>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <string>
#include <thread>
#include <utility>

// The fast reader does not accept the end of the root element, so expat always reads last. It is
// given the prolog, a start tag for each open element, and the rest of the file.
//
// Expat stops where it would have to keep more than a limit. What it would have kept of the part
// that the fast reader has read counts, too. That is at most `mostKept`, so it may keep that much
// less of the rest. If it then stops for want of memory, that is uncertain, and it reads the whole
// file. Of the part that was read fast it would have kept, in bytes, at most:
//
//   1,000,000  names: 128 of elements and 128 of attributes for each of five scanners, of
//              200 bytes, and some 150 for each
//     120,000  the names of 200 open elements, twice: 100 between two chunks, 100 within one
//     400,000  the values of tags of up to 8,191 bytes. Expat keeps the blocks that it has had
//              for the values of a tag; a search for the worst tags came to 30,000
//   1,200,000  the values of longer tags: each adds blocks of at most four times its size, and
//              one kibibyte

namespace ambulet {

namespace {

constexpr unsigned mostThreads = 4;  // each takes a chunk and its tables in memory
constexpr std::size_t mostKept = std::size_t{3} * 1024 * 1024;
constexpr std::uint64_t mostLongTagBytes = std::uint64_t{256} * 1024;

/// The part of the file that must have been scanned for expat to read only the rest. Reading so
/// little again takes hardly longer, and its memory is certain.
constexpr std::uint64_t leastScanned = 16;

/// Start tags of the elements within the root.
std::string startTags(const TagScanner::ElementNames& open) {
    std::string tags;
    for (std::size_t level = 1; level < open.size(); ++level) {
        tags += '<' + open[level] + '>';
    }
    return tags;
}

}  // namespace

unsigned ExportReader::usualThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, mostThreads);
}

std::optional<XMLError> ExportReader::read(const InputFile& file, XMLReaderDelegate& delegate,
                                           StepSums& sums) const {
    StepSums::ByDate earlier = sums.takeAll();
    std::optional<XMLError> error;
    if (!readByBoth(file, delegate, sums, error)) {
        sums.takeAll();
        error = ExpatReader(_options.blockSize).read(file, delegate);
    }
    sums.add(std::move(earlier));
    return error;
}

/// False where expat has to read the whole file; what is in `sums` does not count then.
bool ExportReader::readByBoth(const InputFile& file, XMLReaderDelegate& delegate, StepSums& sums,
                              std::optional<XMLError>& error) const {
    ExpatDocument document(file, delegate, _options.blockSize);
    const std::optional<PlainProlog> prolog = document.readPlainProlog();
    if (!prolog) {
        error = document.read();
        return true;
    }
    const FileScan scan{std::min(_options.threads, mostThreads), _options.blockSize,
                        _options.chunkSize, mostLongTagBytes};
    const ScanPlace place = scan.scan(file, {prolog->end, {prolog->rootName}}, sums);
#ifdef __GLIBC__
    // What the fast reader has freed would stay with the program, and expat's memory come on top.
    malloc_trim(0);
#endif
    if (place.offset < file.size() / leastScanned) {
        return false;
    }
    error = document.readFrom(place.offset, startTags(place.open), mostKept);
    return !error || error->reason != XMLErrorReason::outOfMemory;
}

}  // namespace ambulet
