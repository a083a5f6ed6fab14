#include "import/fast/FileScan.h"

#include "import/xml/Characters.h"
#include "import/xml/InputBuffer.h"
#include "import/xml/InputFile.h"

#include <algorithm>
#include <bit>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

// With several threads, each takes the next chunk of the file and scans it from the first place
// that looks like a start tag. That is speculative: the place may be in a comment. So a chunk has
// its own sums, and lists of the elements that it closed and that it left open. Chunks are merged
// in order. A chunk fits if it starts where the chunk before ended, and if the elements that it
// closed were open there. A chunk that does not fit is scanned again, in order.
//
// The thread that delivers the next chunk in order merges it, and those after it that are ready,
// while the others scan. They wait only if they are far ahead, so that memory is bounded.

namespace ambulet {

namespace {

/// The most bytes of an incomplete token that are kept at a block's end and scanned again, at most
/// a quarter of all; if there are more, the scan ends. The tokens of exports have up to 500 bytes.
constexpr std::size_t longestCarriedOver = std::size_t{64} * 1024;

/// The size of the first block. Later ones are larger: a damaged document may end in the first.
constexpr std::uint64_t firstBlock = std::uint64_t{256} * 1024;

/// The number of bytes after a chunk in which the first tag of the next chunk is looked for: some
/// dozens of records. They are read twice, and are a sixty-fourth of a chunk.
constexpr std::size_t overlap = std::size_t{16} * 1024;

/// The most chunks that are taken and not merged. The merging thread may be interrupted for some
/// milliseconds, while others scan a chunk in a fifth of a millisecond.
constexpr std::uint64_t mostAhead = 24;

/// After this number of chunks that did not fit, the rest is scanned in order. Each of them is
/// scanned twice, so together they cost about three milliseconds.
constexpr int mostMisfits = 16;

/// Scans a file from block to block, in order.
class SequentialScan {
  public:
    SequentialScan(const InputFile& file, std::size_t blockSize)
        : _file(file), _blockSize(blockSize),
          _buffer(longestCarriedOver, blockSize, TagScanner::padding) {}

    /// Scans from the boundary `offset` to the first boundary at or after `stop`. If the scanner
    /// refuses a token, or the file cannot be read further, the scan ends earlier. Returns the
    /// boundary where it ended.
    std::uint64_t scan(TagScanner& scanner, std::uint64_t offset, std::uint64_t stop) {
        const std::uint64_t start = offset - offset % firstBlock;
        std::size_t carriedOver = 0;  // the bytes from `offset` on, before those that are read next
        while (offset < stop && carriedOver <= longestCarriedOver) {
            const std::uint64_t next = offset + carriedOver;
            // Blocks end at multiples of their size in the file, which is also quicker.
            const std::uint64_t block =
                std::min(_blockSize, std::bit_floor(std::max(next - start, firstBlock)));
            const std::size_t count = _buffer.read(_file, next, block - next % block);
            if (count == 0) {
                break;
            }
            const char* const begin = _buffer.begin() - carriedOver;
            const std::size_t size = carriedOver + count;
            const char* const reached =
                scanner.scan(begin, begin + std::min<std::uint64_t>(stop - offset, size));
            const auto scanned = static_cast<std::size_t>(reached - begin);
            offset += scanned;
            carriedOver = size - scanned;
            std::memmove(_buffer.begin() - std::min(carriedOver, longestCarriedOver), reached,
                         std::min(carriedOver, longestCarriedOver));
        }
        return offset;
    }

  private:
    const InputFile& _file;
    std::uint64_t _blockSize;
    InputBuffer _buffer;
};

/// The result of scanning a chunk by itself.
struct Chunk {
    std::optional<std::uint64_t> start;  // none if no start tag was found
    std::uint64_t reached = 0;
    std::uint64_t stop = 0;  // the start of the next chunk; the end of this one if that has none
    TagScanner::ElementNames closed;
    TagScanner::ElementNames open;
    StepSums::ByDate sums;
    std::uint64_t longTagBytes = 0;
};

/// Scans chunks, each by itself. One thread at a time.
class ChunkScan {
  public:
    ChunkScan(const InputFile& file, const FileScan& options)
        : _file(file), _mostLongTagBytes(options.mostLongTagBytes),
          _buffer(0, options.chunkSize + overlap, TagScanner::padding) {}

    /// Scans the chunk from `begin` to `end`. The first chunk is scanned from `begin` on, the
    /// others from their first tag on.
    Chunk scan(std::uint64_t begin, std::uint64_t end, bool isFirst) {
        const auto nominalSize = static_cast<std::size_t>(end - begin);
        const std::size_t size = _buffer.read(_file, begin, nominalSize + overlap);
        const char* const bytes = _buffer.begin();
        const auto offset = [&](const char* at) {
            return begin + static_cast<std::uint64_t>(at - bytes);
        };
        const char* const start = isFirst ? bytes : findTag(bytes, bytes + std::min(size, overlap));
        const char* const stop =
            size > nominalSize ? findTag(bytes + nominalSize, bytes + size) : nullptr;
        Chunk chunk;
        chunk.stop = stop != nullptr ? offset(stop) : end;
        if (start != nullptr) {
            _scanner.startAnywhere(_mostLongTagBytes);
            chunk.start = offset(start);
            chunk.reached = offset(_scanner.scan(start, stop != nullptr ? stop : bytes + size));
            chunk.closed = _scanner.closed();
            chunk.open = _scanner.open();
            chunk.sums = _scanner.sums().takeAll();
            chunk.longTagBytes = _scanner.longTagBytes();
        }
        return chunk;
    }

  private:
    /// The "<" of the first thing after a line break that looks like a start tag; null if there is
    /// none.
    static const char* findTag(const char* begin, const char* end) {
        const std::string_view bytes(begin, static_cast<std::size_t>(end - begin));
        std::size_t at = 0;
        while ((at = bytes.find('\n', at)) != std::string_view::npos) {
            at = std::min(bytes.find_first_not_of(" \n", at), bytes.size());
            if (bytes.size() - at >= 2 && bytes[at] == '<' && isNameStart(bytes[at + 1])) {
                return begin + at;
            }
        }
        return nullptr;
    }

    const InputFile& _file;
    std::uint64_t _mostLongTagBytes;
    InputBuffer _buffer;
    TagScanner _scanner;
};

/// Scans a file with one thread or more. For one use.
class WholeScan {
  public:
    WholeScan(const InputFile& file, const FileScan& options, ScanPlace start, StepSums& sums)
        : _file(file), _options(options), _begin(start.offset), _sums(sums),
          _inOrder(file, options.blockSize), _place(std::move(start)) {}

    ScanPlace run() {
        if (_options.threads == 1 || !runInChunks()) {
            scanInOrder(std::numeric_limits<std::uint64_t>::max());
        }
        return std::move(_place);
    }

  private:
    /// False if the rest must be scanned in order.
    bool runInChunks() {
        std::vector<std::thread> others;
        try {
            others.reserve(_options.threads);
            for (unsigned thread = 1; thread < _options.threads; ++thread) {
                others.emplace_back([this] { work(); });
            }
        } catch (const std::exception&) {
            // Deliberate: the system has no more threads, or no memory for them. The others do all
            // the work.
        }
        work();
        for (std::thread& thread : others) {
            thread.join();
        }
        if (_thrown && _isMerging) {
            std::rethrow_exception(_thrown);  // a chunk may be merged in part
        }
        return !_thrown && _misfits < mostMisfits;
    }

    /// What each thread does. If it runs out of memory, all end, and the rest is scanned in order.
    void work() noexcept {
        try {
            ChunkScan chunks(_file, _options);
            std::uint64_t index = 0;
            while (takeIndex(index)) {
                // Chunks end at multiples of their size in the file.
                const std::uint64_t end =
                    (_begin / _options.chunkSize + index + 1) * _options.chunkSize;
                const std::uint64_t begin = index == 0 ? _begin : end - _options.chunkSize;
                deliver(index, chunks.scan(begin, end, index == 0));
            }
        } catch (...) {
            const std::lock_guard lock(_mutex);
            _thrown = std::current_exception();
            _isStopped = true;
            _changed.notify_all();
        }
    }

    /// Takes the next chunk for the calling thread. False if no more are wanted.
    bool takeIndex(std::uint64_t& index) {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [this] { return _isStopped || _next < _merged + mostAhead; });
        index = _next++;
        return !_isStopped;
    }

    /// Hands over a scanned chunk. Merges all chunks that are next in order, unless another thread
    /// is doing that.
    void deliver(std::uint64_t index, Chunk chunk) {
        std::unique_lock lock(_mutex);
        _waiting.emplace(index, std::move(chunk));
        if (_isMerging) {
            return;
        }
        _isMerging = true;
        while (!_isStopped && _waiting.contains(_merged)) {
            const auto next = _waiting.extract(_merged);
            lock.unlock();
            const bool goesOn = merge(std::move(next.mapped()));
            lock.lock();
            ++_merged;
            _isStopped |= !goesOn;
            _changed.notify_all();
        }
        _isMerging = false;
    }

    /// False if the scan ends, or if the rest must be scanned in order.
    bool merge(Chunk chunk) {
        if (!fits(chunk)) {
            ++_misfits;
            return scanInOrder(chunk.stop) && _misfits < mostMisfits;
        }
        _place.offset = chunk.reached;
        _place.open.resize(_place.open.size() - chunk.closed.size());
        _place.open.insert(_place.open.end(), chunk.open.begin(), chunk.open.end());
        _sums.add(std::move(chunk.sums));
        _longTagBytes += chunk.longTagBytes;
        return scanInOrder(chunk.stop);
    }

    /// Whether the chunk continues the merged part and stays within the limits. It must not close
    /// the root element.
    bool fits(const Chunk& chunk) const {
        return chunk.start == _place.offset && chunk.closed.size() < _place.open.size() &&
               _place.open.size() - chunk.closed.size() + chunk.open.size() <=
                   TagScanner::deepest &&
               std::equal(chunk.closed.begin(), chunk.closed.end(), _place.open.rbegin()) &&
               chunk.longTagBytes <= _options.mostLongTagBytes - _longTagBytes;
    }

    /// Scans up to `stop` if the merged part ends before it. False if the scan ends.
    bool scanInOrder(std::uint64_t stop) {
        if (_place.offset < stop &&
            _scanner.startIn(_place.open, _options.mostLongTagBytes - _longTagBytes)) {
            _place.offset = _inOrder.scan(_scanner, _place.offset, stop);
            _place.open = _scanner.open();
            _sums.add(_scanner.sums().takeAll());
            _longTagBytes += _scanner.longTagBytes();
        }
        return _place.offset >= stop;
    }

    const InputFile& _file;
    const FileScan& _options;
    const std::uint64_t _begin;

    // Used by the merging thread only.
    StepSums& _sums;
    SequentialScan _inOrder;
    TagScanner _scanner;
    ScanPlace _place;  // the end of the merged part
    std::uint64_t _longTagBytes = 0;
    int _misfits = 0;

    std::mutex _mutex;  // guards what follows
    std::condition_variable _changed;
    std::map<std::uint64_t, Chunk> _waiting;  // scanned, but not merged
    std::uint64_t _next = 0;
    std::uint64_t _merged = 0;
    bool _isMerging = false;
    bool _isStopped = false;
    std::exception_ptr _thrown;
};

}  // namespace

ScanPlace FileScan::scan(const InputFile& file, ScanPlace start, StepSums& sums) const {
    return WholeScan(file, *this, std::move(start), sums).run();
}

}  // namespace ambulet
