#pragma once

#include "import/fast/FastBlocks.h"
#include "import/fast/FastScanner.h"
#include "import/steps/StepSums.h"
#include "import/xml/InputFile.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>

namespace ambulet {

/// A place between two pieces of markup, and the elements that are open there, the root first.
struct FastPlace {
    std::uint64_t position = 0;  // in the file
    FastScanner::Names open;
};

/// Reads a file by several threads at once: each takes the next chunk and reads it from the first
/// place that looks like the beginning of a start tag. That is a guess. The chunk counts only if
/// the one before ends exactly there; otherwise it is read again, in order.
class FastChunks {
  public:
    FastChunks(const InputFile& file, std::size_t chunkSize, std::size_t blockSize);

    /// Reads on from `start` with `threads` threads, of which the calling one is one, and returns
    /// the place where the fast road ends. The step records before it are added to `sums`. Throws
    /// what a thread threw.
    FastPlace read(FastPlace start, unsigned threads, StepSums& sums);

  private:
    /// What came of reading a chunk.
    struct Chunk {
        bool isBehindEnd = false;  // of the file
        bool hasStart = false;
        std::uint64_t start = 0;
        std::uint64_t reached = 0;
        std::uint64_t stop = 0;  // where the next chunk starts
        FastScanner::Names closed;
        FastScanner::Names open;
        StepSums::ByDate sums;
    };

    class Worker;

    void work();
    bool takeIndex(std::uint64_t& index);
    void deliver(std::uint64_t index, Chunk chunk);
    void stop();

    // Of the thread that merges.
    bool merge(Chunk& chunk);
    bool follows(const Chunk& chunk) const;
    bool readAgain(std::uint64_t stop);

    const InputFile& _file;
    const std::size_t _chunkSize;
    FastBlocks _blocks;
    FastScanner _scanner;  // for what is read again
    std::uint64_t _begin = 0;
    FastPlace _place;  // up to here all is merged
    StepSums* _sums = nullptr;
    int _wrongGuesses = 0;

    std::mutex _mutex;  // of what follows
    std::condition_variable _changed;
    std::map<std::uint64_t, Chunk> _waiting;  // for those before them
    std::uint64_t _next = 0;
    std::uint64_t _merged = 0;
    bool _isMerging = false;
    bool _isStopped = false;
    std::exception_ptr _thrown;
};

}  // namespace ambulet
