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

// The fast reader does not accept the end of the root element, so expat always reads last. Expat is
// given the prolog, the root's start tag, one for each other open element, and the rest of the
// file.
//
// Expat stops if it would use more memory than its limit. If it had read the whole file, it would
// also keep memory for the part that was read fast, at most `mostKept` bytes. So the limit for the
// rest is lowered by `mostKept`. If expat then runs out of memory, the whole file may still need
// less than the limit, because `mostKept` is an upper bound. So expat reads the whole file again.
//
// For the part that was read fast, expat would keep at most, in bytes:
//
//   1,000,000  names: each of five scanners (one for each of four threads, and one for what is
//              scanned in order) accepts 128 of elements and 128 of attributes. A name has up to
//              200 bytes, and expat needs about 150 more. That is 450,000; the rest is a margin
//     120,000  the names of 200 open elements (100 that are open where a chunk begins, and 100 that
//              are opened in it); expat stores each of these names twice
//     400,000  the values of tags of up to 8,191 bytes. Expat keeps the blocks that it allocated
//              for the values of a tag; a search for the worst case found 30,000 bytes
//   1,200,000  the values of longer tags, which have at most `mostLongTagBytes` together. Each tag
//              adds blocks of at most four times its size, and one kibibyte

namespace ambulet {

namespace {

constexpr unsigned mostThreads = 4;  // each needs memory for a chunk and for tables
constexpr std::size_t mostKept = std::size_t{3} * 1024 * 1024;
constexpr std::uint64_t mostLongTagBytes = std::uint64_t{256} * 1024;

/// If the fast reader read less than one sixteenth of the file, its sums are discarded, and expat
/// reads that part, too. This takes hardly longer, and no memory has to be estimated.
constexpr std::uint64_t leastScannedDivisor = 16;

/// The start tags of the open elements, without the root.
std::string startTags(const TagScanner::ElementNames& open) {
    std::string tags;
    for (std::size_t level = 1; level < open.size(); ++level) {
        tags += '<' + open[level] + '>';
    }
    return tags;
}

std::size_t expatBlockSize(const ExportReader::Options& options) {
    return std::min(options.blockSize, ExpatReader::defaultBlockSize);
}

}  // namespace

unsigned ExportReader::usualThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, mostThreads);
}

std::optional<XMLError> ExportReader::read(const InputFile& file, XMLReaderDelegate& delegate,
                                           StepSums& sums) const {
    StepSums::ByDate earlier = sums.byDate();
    std::optional<XMLError> error;
    if (!readByBoth(file, delegate, sums, error)) {
        sums.set(std::move(earlier));
        error = ExpatReader(expatBlockSize(_options)).read(file, delegate);
    }
    return error;
}

/// False if expat must read the whole file again; then `sums` must be reset.
bool ExportReader::readByBoth(const InputFile& file, XMLReaderDelegate& delegate, StepSums& sums,
                              std::optional<XMLError>& error) const {
    ExpatDocument document(file, delegate, expatBlockSize(_options));
    const std::optional<PlainProlog> prolog = document.readPlainProlog();
    if (!prolog) {
        error = document.read();
        return true;
    }
    const FileScan scan{std::min(_options.threads, mostThreads), _options.blockSize,
                        _options.chunkSize, mostLongTagBytes};
    const ScanPlace start{prolog->end, {prolog->rootName}};
    StepSums scanned;
    const ScanPlace place = scan.scan(file, start, scanned);
#ifdef __GLIBC__
    // Otherwise malloc would keep the memory that the fast reader has freed while expat needs more.
    malloc_trim(0);
#endif
    if (place.offset - start.offset < file.size() / leastScannedDivisor) {
        error = document.readFrom(start.offset, "", 0);
        return true;
    }
    sums.add(scanned.takeAll());
    error = document.readFrom(place.offset, startTags(place.open), mostKept);
    return !error || error->reason != XMLErrorReason::outOfMemory;
}

}  // namespace ambulet
