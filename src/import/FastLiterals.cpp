#include "import/FastLiterals.h"

#include <cstdint>
#include <cstring>

// A literal begins with the closing quote of a value and ends with the next quote after that, or it
// is not kept (a quote may stand in text): so the bytes alone say how long it is.

namespace {

bool isQuote(char byte) {
    return byte == '"' || byte == '\'';
}

/// The length up to, and with, the next quote after the first byte; 0 if it is beyond `longest`.
std::size_t lengthToQuote(const char* at, std::size_t longest) {
    for (std::size_t length = 1; length < longest; ++length) {
        if (isQuote(at[length])) {
            return length + 1;
        }
        if (at[length] == '\0') {
            break;
        }
    }
    return 0;
}

}  // namespace

std::size_t FastLiterals::slot(const char* at, std::size_t size) {
    const auto mix = [](std::uint64_t value) { return value * 0x9E3779B97F4A7C15ULL; };
    const auto load = [](const char* from, std::size_t count) {
        std::uint64_t value = 0;
        std::memcpy(&value, from, count);
        return value;
    };
    std::uint64_t hash = mix(size);
    for (; size > 8; size -= 8, at += 8) {
        hash = mix(hash ^ load(at, 8)) ^ (hash >> 29U);
    }
    hash = mix(hash ^ load(at, size));
    return static_cast<std::size_t>((hash >> 32U) % slotCount);
}

FastLiterals::Literal* FastLiterals::find(const char* at) const {
    const std::size_t size = lengthToQuote(at, longest);
    if (size == 0) {
        return nullptr;
    }
    std::size_t index = slot(at, size);
    while (_slots[index] != nullptr &&
           (_slots[index]->markup.size != size || !_slots[index]->isAt(at))) {
        index = (index + 1) % slotCount;
    }
    return _slots[index].get();
}

FastLiterals::Literal* FastLiterals::add(const FastMarkup& markup, const char* at) {
    if (_count == most || !markup.isTagsOnly || markup.end != FastMarkup::End::attribute ||
        lengthToQuote(at, longest) != markup.size) {
        return nullptr;
    }
    std::size_t index = slot(at, markup.size);
    while (_slots[index] != nullptr) {
        index = (index + 1) % slotCount;
    }
    ++_count;
    _slots[index] = std::make_unique<Literal>(Literal{markup, std::string(at, markup.size)});
    return _slots[index].get();
}
