// Replaces operator new and aligned_alloc. Sanitizers still check the memory, because malloc and
// posix_memalign allocate it.

#include "support/LittleMemory.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>
#include <unistd.h>

namespace ambulet {

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();
std::atomic<int> left = unlimited;

bool fails() {
    return left != unlimited && getpid() != gettid() && left.fetch_sub(1) <= 0;
}

}  // namespace

LittleMemory::LittleMemory(int allocations) {
    left = allocations;
}

LittleMemory::~LittleMemory() {
    left = unlimited;
}

bool LittleMemory::hasFailed() const {
    return left < 0;
}

}  // namespace ambulet

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return ambulet::fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

extern "C" void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    void* memory = nullptr;
    return !ambulet::fails() && posix_memalign(&memory, alignment, size) == 0 ? memory : nullptr;
}
