#include "import/fast/FastChunks.h"

#include "import/fast/FastBytes.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace ambulet {

// No thread waits for another one's chunk: a chunk that is read is put down, and whoever finds that
// the next one in order lies there merges, while the others read on. They only wait where they are
// far ahead, so that what lies there is bounded.

namespace {

/// The next chunk's first tag is looked for in so many bytes.
constexpr std::size_t overlap = std::size_t{16} * 1024;

constexpr std::uint64_t mostAhead = 24;

/// A document in which so many guesses were wrong is read in order.
constexpr int mostWrongGuesses = 16;

/// The first "<" of what looks like a start tag after a line break; null if there is none.
const char* findTag(const char* begin, const char* end) {
    const auto isLetter = [](char byte) {
        return ('a' <= byte && byte <= 'z') || ('A' <= byte && byte <= 'Z');
    };
    while (begin != end) {
        const auto size = static_cast<std::size_t>(end - begin);
        const auto* at = static_cast<const char*>(std::memchr(begin, '\n', size));
        if (at == nullptr) {
            return nullptr;
        }
        at = std::find_if(at, end, [](char byte) { return byte != '\n' && byte != ' '; });
        if (end - at >= 2 && at[0] == '<' && isLetter(at[1])) {
            return at;
        }
        begin = at;
    }
    return nullptr;
}

}  // namespace

/// What a thread has for itself.
class FastChunks::Worker {
  public:
    Worker(const InputFile& file, std::size_t chunkSize)
        : _file(file), _chunkSize(chunkSize),
          _bytes(std::make_unique_for_overwrite<char[]>(chunkSize + overlap + FastBytes::padding)) {
    }

    /// Reads the chunk that begins at `begin`; at its very beginning if it is the first.
    Chunk read(std::uint64_t begin, bool isFirst) {
        const std::size_t size = fill(begin);
        const auto position = [&](const char* at) {
            return begin + static_cast<std::uint64_t>(at - _bytes.get());
        };
        const char* const bytes = _bytes.get();
        const char* const end = bytes + size;
        const char* const start = isFirst ? bytes : findTag(bytes, bytes + std::min(size, overlap));
        const char* const stop = size > _chunkSize ? findTag(bytes + _chunkSize, end) : nullptr;
        Chunk chunk;
        chunk.isBehindEnd = size == 0;
        chunk.hasStart = start != nullptr;
        chunk.stop = stop != nullptr ? position(stop) : begin + _chunkSize;
        if (start != nullptr) {
            _scanner.startAnywhere();
            chunk.start = position(start);
            chunk.reached = position(_scanner.scan(start, stop != nullptr ? stop : end));
            chunk.closed = _scanner.closed();
            chunk.open = _scanner.open();
            chunk.sums = _scanner.sums().takeAll();
        }
        return chunk;
    }

  private:
    std::size_t fill(std::uint64_t begin) {
        std::size_t size = 0;
        std::error_code asIfTheFileEnded;  // the reader that goes on there says why
        while (const std::size_t count = _file.read(
                   begin + size, std::span(_bytes.get() + size, _chunkSize + overlap - size),
                   asIfTheFileEnded)) {
            size += count;
        }
        std::fill_n(_bytes.get() + size, FastBytes::padding, '\0');
        return size;
    }

    const InputFile& _file;
    std::size_t _chunkSize;
    std::unique_ptr<char[]> _bytes;
    FastScanner _scanner;
};

FastChunks::FastChunks(const InputFile& file, std::size_t chunkSize, std::size_t blockSize)
    : _file(file), _chunkSize(chunkSize), _blocks(file, blockSize) {}

FastPlace FastChunks::read(FastPlace start, unsigned threads, StepSums& sums) {
    _begin = start.position;
    _place = std::move(start);
    _sums = &sums;
    {
        std::vector<std::jthread> others;
        for (unsigned thread = 1; thread < threads; ++thread) {
            others.emplace_back([this] { work(); });
        }
        work();
    }
    if (_thrown) {
        std::rethrow_exception(_thrown);
    }
    if (_wrongGuesses == mostWrongGuesses) {
        readAgain(std::numeric_limits<std::uint64_t>::max());
    }
    return _place;
}

/// A thread begins here.
void FastChunks::work() {
    try {
        Worker worker(_file, _chunkSize);
        std::uint64_t index = 0;
        while (takeIndex(index)) {
            deliver(index, worker.read(_begin + index * _chunkSize, index == 0));
        }
    } catch (...) {
        {
            const std::lock_guard lock(_mutex);
            _thrown = std::current_exception();
        }
        stop();
    }
}

/// The next chunk for the calling thread; false where there are to be no more.
bool FastChunks::takeIndex(std::uint64_t& index) {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _isStopped || _next < _merged + mostAhead; });
    index = _next++;
    return !_isStopped;
}

void FastChunks::deliver(std::uint64_t index, Chunk chunk) {
    std::unique_lock lock(_mutex);
    _waiting.emplace(index, std::move(chunk));
    if (_isMerging) {
        return;
    }
    _isMerging = true;
    while (!_isStopped) {
        auto next = _waiting.extract(_merged);
        if (next.empty()) {
            break;
        }
        lock.unlock();
        const bool goesOn = merge(next.mapped());
        lock.lock();
        ++_merged;
        _isStopped |= !goesOn;
        _changed.notify_all();
    }
    _isMerging = false;
}

void FastChunks::stop() {
    const std::lock_guard lock(_mutex);
    _isStopped = true;
    _changed.notify_all();
}

/// False where the fast road ends, or is to be gone on alone.
bool FastChunks::merge(Chunk& chunk) {
    if (chunk.isBehindEnd) {
        return false;
    }
    if (!follows(chunk)) {
        ++_wrongGuesses;
        return readAgain(chunk.stop) && _wrongGuesses < mostWrongGuesses;
    }
    _place.position = chunk.reached;
    _place.open.resize(_place.open.size() - chunk.closed.size());
    std::ranges::move(chunk.open, std::back_inserter(_place.open));
    _sums->add(chunk.sums);
    return readAgain(chunk.stop);
}

/// Whether the chunk starts where the one before ended, and closes what is open there.
bool FastChunks::follows(const Chunk& chunk) const {
    return chunk.hasStart && chunk.start == _place.position &&
           chunk.closed.size() < _place.open.size() &&
           std::equal(chunk.closed.begin(), chunk.closed.end(), _place.open.rbegin());
}

/// Reads up to `stop` in order, if there is anything left of it. False where the fast road ends.
bool FastChunks::readAgain(std::uint64_t stop) {
    if (_place.position < stop && _scanner.startIn(_place.open)) {
        _place.position = _blocks.read(_scanner, _place.position, stop);
        _place.open = _scanner.open();
        _sums->add(_scanner.sums().takeAll());
    }
    return _place.position >= stop;
}

}  // namespace ambulet
