#pragma once

#include "import/fast/ByteScan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

/// Interns the names of elements, or those of attributes: numbers for as many as a document may
/// well have. One thread at a time.
class NameTable {
  public:
    using Id = std::uint8_t;

    /// Exports have some 60 names of elements and some 100 of attributes.
    static constexpr std::size_t capacity = 128;

    /// In bytes. The longest name in exports has 60.
    static constexpr std::size_t longest = 200;

    /// None where the table is full, or the name is too long.
    std::optional<Id> id(std::string_view name) {
        if (name.size() > longest) {
            return std::nullopt;
        }
        std::size_t slot = ByteScan::hash(name.data(), name.size(), _salt) % slotCount;
        while (_slots[slot] != 0) {
            const Id id = static_cast<Id>(_slots[slot] - 1);
            if (_names[id] == name) {
                return id;
            }
            slot = (slot + 1) % slotCount;
        }
        if (_names.size() == capacity) {
            return std::nullopt;
        }
        _names.emplace_back(name);
        _slots[slot] = static_cast<std::uint8_t>(_names.size());
        return static_cast<Id>(_names.size() - 1);
    }

    const std::string& name(Id id) const { return _names[id]; }

  private:
    static constexpr std::size_t slotCount = 4 * capacity;

    std::uint64_t _salt = std::random_device()();
    std::array<std::uint8_t, slotCount> _slots{};  // 1 + the name's number; open addressing
    std::vector<std::string> _names;
};

/// A set of interned names.
class NameSet {
  public:
    NameSet() = default;
    explicit NameSet(NameTable::Id id) { (id < 64 ? _low : _high) = std::uint64_t{1} << id % 64U; }

    /// False where some of the names were in the set already.
    bool add(NameSet other) {
        const bool areNew = ((_low & other._low) | (_high & other._high)) == 0;
        _low |= other._low;
        _high |= other._high;
        return areNew;
    }

  private:
    static_assert(NameTable::capacity <= 128);

    std::uint64_t _low = 0;
    std::uint64_t _high = 0;
};

/// The names of a document.
struct Names {
    NameTable elements;
    NameTable attributes;
};

}  // namespace ambulet
