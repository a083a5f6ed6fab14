#include "import/expat/ExpatMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>

namespace ambulet {

// Expat passes no context to its allocation functions, so the remaining memory is a thread-local
// variable. A header before each block stores the block's size.

namespace {

thread_local std::size_t available = 0;
thread_local bool isCounting = true;

struct alignas(std::max_align_t) Header {
    std::size_t counted;  // the bytes that were subtracted from `available`
    std::size_t size;     // the size of the header and the block
};

Header* headerOf(void* block) {
    return static_cast<Header*>(block) - 1;
}

// Blocks of at least this size are mapped, so that freeing them returns their memory to the system.
// In the heap, a later block often does not fit into the space of an earlier one, and the memory of
// both would stay in use. At this size, rounding up to a page wastes less than a hundredth.
constexpr std::size_t largeSize = std::size_t{512} * 1024;

Header* take(std::size_t size) {
    if (size < largeSize) {
        return static_cast<Header*>(std::malloc(size));
    }
    void* const pages =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : static_cast<Header*>(pages);
}

void giveBack(Header* header) {
    if (header->size < largeSize) {
        std::free(header);
    } else {
        munmap(header, header->size);
    }
}

Header* withSize(Header* header, std::size_t size) {
    if (header != nullptr && std::max(header->size, size) < largeSize) {
        return static_cast<Header*>(std::realloc(header, size));
    }
    Header* const made = take(size);
    if (made != nullptr && header != nullptr) {
        std::memcpy(made, header, std::min(size, header->size));
        giveBack(header);
    }
    return made;
}

void* resize(void* block, std::size_t size) {
    const std::size_t given = block == nullptr ? 0 : headerOf(block)->counted;
    const std::size_t needed = isCounting ? size + ExpatMemory::blockOverhead : 0;
    if (needed > given && needed - given > available) {
        return nullptr;
    }
    Header* const header =
        withSize(block == nullptr ? nullptr : headerOf(block), sizeof(Header) + size);
    if (header == nullptr) {
        return nullptr;
    }
    available += given - needed;
    *header = {needed, sizeof(Header) + size};
    return header + 1;
}

void* allocate(std::size_t size) {
    return resize(nullptr, size);
}

void release(void* block) {
    if (block != nullptr) {
        available += headerOf(block)->counted;
        giveBack(headerOf(block));
    }
}

}  // namespace

ExpatMemory::ExpatMemory(std::size_t limit) : _outerAvailable(available) {
    available = limit;
}

ExpatMemory::~ExpatMemory() {
    available = _outerAvailable;
}

ExpatMemory::Uncounted::Uncounted() {
    isCounting = false;
}

ExpatMemory::Uncounted::~Uncounted() {
    isCounting = true;
}

const XML_Memory_Handling_Suite* ExpatMemory::functions() {
    static constexpr XML_Memory_Handling_Suite suite{allocate, resize, release};
    return &suite;
}

}  // namespace ambulet
