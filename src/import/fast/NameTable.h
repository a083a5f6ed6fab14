#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

/// Gives each name a number (interns it). A document needs two tables: one for its elements, one
/// for its attributes. One thread at a time.
class NameTable {
  public:
    using Id = std::uint8_t;

    /// Exports have some 60 names of elements and some 100 of attributes.
    static constexpr std::size_t capacity = 128;

    /// The longest name that is accepted, in bytes. Names in exports have at most 60 bytes. The
    /// memory limit in ExportReader.cpp depends on this number.
    static constexpr std::size_t longestName = 200;

    /// The number of the name. None if the name is new and the table is full, or if it is too long.
    std::optional<Id> id(std::string_view name) {
        const auto known = std::ranges::find(_names, name);
        const auto id = static_cast<Id>(known - _names.begin());
        if (known == _names.end()) {
            if (_names.size() == capacity || name.size() > longestName) {
                return std::nullopt;
            }
            _names.emplace_back(name);
        }
        return id;
    }

    const std::string& name(Id id) const { return _names[id]; }

  private:
    std::vector<std::string> _names;  // searched from the start: names are few, lookups rare
};

/// The names of a document.
struct Names {
    NameTable elements;
    NameTable attributes;
};

}  // namespace ambulet
