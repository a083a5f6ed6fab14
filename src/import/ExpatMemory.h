#pragma once

#include <expat.h>

#include <cstddef>

/// Bounds the memory of the expat parsers that a thread makes, uses and frees while this lives:
/// beyond the limit expat is refused memory and ends with XML_ERROR_NO_MEMORY. Such parsers are
/// made with `functions()`.
class ExpatMemory {
  public:
    /// In bytes.
    struct Limit {
        std::size_t all;

        /// In blocks of less than `largeBlock`: what expat keeps for every open element and every
        /// name lies there; a long token does not.
        std::size_t inSmallBlocks;
    };
    static constexpr std::size_t largeBlock = std::size_t{64} * 1024;

    explicit ExpatMemory(Limit limit);
    ~ExpatMemory();
    ExpatMemory(const ExpatMemory&) = delete;
    ExpatMemory& operator=(const ExpatMemory&) = delete;

    static const XML_Memory_Handling_Suite* functions();

  private:
    Limit _outerAvailable;
};
