#include "import/ExpatMemory.h"

#include <cstdlib>

// expat hands its allocation functions no context, so what is left of the limit is the thread's.
// The size of each block stands in front of it.

namespace {

thread_local std::size_t available = 0;

struct alignas(std::max_align_t) Header {
    std::size_t size;
};

Header* headerOf(void* block) {
    return static_cast<Header*>(block) - 1;
}

void* resize(void* block, std::size_t size) {
    const std::size_t oldSize = block == nullptr ? 0 : headerOf(block)->size;
    if (size > oldSize && size - oldSize > available) {
        return nullptr;
    }
    auto* header = static_cast<Header*>(
        std::realloc(block == nullptr ? nullptr : headerOf(block), sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    available += oldSize - size;
    header->size = size;
    return header + 1;
}

void* allocate(std::size_t size) {
    return resize(nullptr, size);
}

void release(void* block) {
    if (block != nullptr) {
        available += headerOf(block)->size;
        std::free(headerOf(block));
    }
}

}  // namespace

ExpatMemory::ExpatMemory(std::size_t limit) : _outerAvailable(available) {
    available = limit;
}

ExpatMemory::~ExpatMemory() {
    available = _outerAvailable;
}

const XML_Memory_Handling_Suite* ExpatMemory::functions() {
    static constexpr XML_Memory_Handling_Suite suite{allocate, resize, release};
    return &suite;
}
