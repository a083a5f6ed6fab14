#pragma once

#include <expat.h>

#include <cstddef>

/// Bounds the memory of the expat parsers that a thread makes, uses and frees while this lives:
/// beyond the limit expat is refused memory and ends with XML_ERROR_NO_MEMORY. Such parsers are
/// made with `functions()`.
class ExpatMemory {
  public:
    explicit ExpatMemory(std::size_t limit);
    ~ExpatMemory();
    ExpatMemory(const ExpatMemory&) = delete;
    ExpatMemory& operator=(const ExpatMemory&) = delete;

    static const XML_Memory_Handling_Suite* functions();

  private:
    std::size_t _outerAvailable;
};
