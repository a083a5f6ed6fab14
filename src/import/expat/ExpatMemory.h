#pragma once

#include <expat.h>

#include <cstddef>

namespace ambulet {

/// Limits the memory of the expat parsers that a thread creates, uses and frees while this object
/// exists. Beyond the limit, allocations fail, and expat ends with XML_ERROR_NO_MEMORY. Create the
/// parsers with `functions()`.
class ExpatMemory {
  public:
    /// `limit`: in bytes, including the system's overhead for each block.
    explicit ExpatMemory(std::size_t limit);
    ~ExpatMemory();
    ExpatMemory(const ExpatMemory&) = delete;
    ExpatMemory& operator=(const ExpatMemory&) = delete;

    static const XML_Memory_Handling_Suite* functions();

    /// The most bytes that a block in the heap takes besides its own: 16 for the header before the
    /// block, 8 for the header of malloc, and 16 for rounding. Large blocks take whole pages.
    static constexpr std::size_t blockOverhead = 40;

    /// While this object exists, blocks that the thread allocates are not counted.
    class Uncounted {
      public:
        Uncounted();
        ~Uncounted();
        Uncounted(const Uncounted&) = delete;
        Uncounted& operator=(const Uncounted&) = delete;
    };

  private:
    std::size_t _outerAvailable;
};

}  // namespace ambulet
