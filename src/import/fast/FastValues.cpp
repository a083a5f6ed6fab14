#include "import/fast/FastValues.h"

#include <cstring>

namespace ambulet {

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
    return static_cast<std::size_t>(FastBytes::hash(at, size) % slotCount);
}

}  // namespace ambulet
