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

// The fast reader never sees the end of the root element, so expat always has the last word. It is
// given the prolog, a start tag for each open element, and the rest of the file.
//
// What expat keeps counts for its limit of memory, and so for where it stops. Of the part that it
// has not read it would have kept something, too; but no more than `mostKept`. Where that could
// make a difference, expat reads the whole file. In bytes, at most:
//
//   1,000,000  names: 128 of elements and 128 of attributes for each of five scanners, of
//              200 bytes, and some 150 for each
//      60,000  the names of 100 open elements, twice
//     400,000  the values of tags of up to 8,191 bytes. Expat keeps the blocks that it has had
//              for the values of a tag; a search for the worst tags came to 30,000
//   1,200,000  the values of longer tags: each adds blocks of at most four times its size, and one
//              kibibyte

namespace ambulet {

namespace {

constexpr std::size_t mostKept = std::size_t{3} * 1024 * 1024;
constexpr std::uint64_t mostLongTagBytes = std::uint64_t{256} * 1024;

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
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

std::optional<XMLError> ExportReader::read(const InputFile& file, XMLReaderDelegate& delegate,
                                           StepSums& sums) const {
    StepSums::ByDate earlier = sums.takeAll();
    std::optional<XMLError> error;
    bool isUncertain = false;
    {
        ExpatDocument document(file, delegate, _options.blockSize);
        if (const std::optional<PlainProlog> prolog = document.readPlainProlog()) {
            error = readFast(document, *prolog, file, sums);
            isUncertain = error && error->reason == XMLErrorReason::outOfMemory;
        } else {
            error = document.read();
        }
    }
    if (isUncertain) {
        sums.takeAll();
        error = ExpatReader(_options.blockSize).read(file, delegate);
    }
    sums.add(std::move(earlier));
    return error;
}

/// Reads on from the prolog. Where expat runs out of memory, it might not have if it had read the
/// whole file.
std::optional<XMLError> ExportReader::readFast(ExpatDocument& document, const PlainProlog& prolog,
                                               const InputFile& file, StepSums& sums) const {
    const FileScan scan{_options.threads, _options.blockSize, _options.chunkSize, mostLongTagBytes};
    const ScanPlace place = scan.scan(file, {prolog.end, {prolog.rootName}}, sums);
#ifdef __GLIBC__
    // Or what the fast reader has freed stays with the program, and expat's memory comes on top.
    malloc_trim(0);
#endif
    return document.readFrom(place.offset, startTags(place.open), mostKept);
}

}  // namespace ambulet
