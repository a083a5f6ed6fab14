#include "import/FastValues.h"

#include <cstdint>
#include <cstring>

std::size_t FastValues::sizeAt(char quote, const char* at) const {
    const auto* end = static_cast<const char*>(std::memchr(at, quote, longest));
    if (end == nullptr) {
        return 0;
    }
    const auto size = static_cast<std::size_t>(end - at) + 1;
    const std::string& value = _slots[slot(at, size)];
    return value.size() == size && FastBytes::equal(at, value.data(), size) ? size - 1 : 0;
}

void FastValues::keep(std::string_view bytes) {
    if (bytes.size() <= longest) {
        _slots[slot(bytes.data(), bytes.size())] = bytes;
    }
}

std::size_t FastValues::slot(const char* at, std::size_t size) {
    // Independent of each other, so that the processor does many at once.
    const auto part = [](std::uint64_t bytes, std::size_t from) {
        const std::uint64_t product = (bytes + from) * 0x9E3779B97F4A7C15ULL;
        return product ^ (product >> 32U);
    };
    std::uint64_t hash = size;
    if (size < 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, at, size);
        hash += part(bytes, 0);
    } else {
        for (std::size_t from = 0; from < size - 8; from += 8) {
            hash += part(FastBytes::load<std::uint64_t>(at + from), from);
        }
        hash += part(FastBytes::load<std::uint64_t>(at + size - 8), size);
    }
    return static_cast<std::size_t>(hash % slotCount);
}
