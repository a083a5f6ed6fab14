#pragma once

#include <expat.h>

#include <cstddef>

namespace ambulet {

/// Bounds the memory of the expat parsers that a thread makes, uses and frees while this lives:
/// beyond the limit expat is refused memory and ends with XML_ERROR_NO_MEMORY. Such parsers are
/// made with `functions()`.
class ExpatMemory {
  public:
    /// `limit`: in bytes, with what the system needs for the blocks themselves.
    explicit ExpatMemory(std::size_t limit);
    ~ExpatMemory();
    ExpatMemory(const ExpatMemory&) = delete;
    ExpatMemory& operator=(const ExpatMemory&) = delete;

    static const XML_Memory_Handling_Suite* functions();

    /// About what the system needs for a block, in bytes.
    static constexpr std::size_t blockOverhead = 40;

    /// The blocks that are made on the thread while this lives are not counted.
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
