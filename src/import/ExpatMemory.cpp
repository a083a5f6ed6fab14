#include "import/ExpatMemory.h"

#include <cstdlib>

// expat hands its allocation functions no context, so what is left of the limit is the thread's.
// The size of each block stands in front of it.

namespace {

thread_local ExpatMemory::Limit available{};

struct alignas(std::max_align_t) Header {
    std::size_t size;
};

Header* headerOf(void* block) {
    return static_cast<Header*>(block) - 1;
}

ExpatMemory::Limit amount(std::size_t size) {
    return {size, size < ExpatMemory::largeBlock ? size : 0};
}

/// Whether what is left and what is given back are as much as is needed.
bool isEnough(std::size_t left, std::size_t needed, std::size_t given) {
    return needed <= given || needed - given <= left;
}

void* resize(void* block, std::size_t size) {
    const ExpatMemory::Limit given = amount(block == nullptr ? 0 : headerOf(block)->size);
    const ExpatMemory::Limit needed = amount(size);
    if (!isEnough(available.all, needed.all, given.all) ||
        !isEnough(available.inSmallBlocks, needed.inSmallBlocks, given.inSmallBlocks)) {
        return nullptr;
    }
    auto* header = static_cast<Header*>(
        std::realloc(block == nullptr ? nullptr : headerOf(block), sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    available.all += given.all - needed.all;
    available.inSmallBlocks += given.inSmallBlocks - needed.inSmallBlocks;
    header->size = size;
    return header + 1;
}

void* allocate(std::size_t size) {
    return resize(nullptr, size);
}

void release(void* block) {
    if (block != nullptr) {
        const ExpatMemory::Limit given = amount(headerOf(block)->size);
        available.all += given.all;
        available.inSmallBlocks += given.inSmallBlocks;
        std::free(headerOf(block));
    }
}

}  // namespace

ExpatMemory::ExpatMemory(Limit limit) : _outerAvailable(available) {
    available = limit;
}

ExpatMemory::~ExpatMemory() {
    available = _outerAvailable;
}

const XML_Memory_Handling_Suite* ExpatMemory::functions() {
    static constexpr XML_Memory_Handling_Suite suite{allocate, resize, release};
    return &suite;
}
