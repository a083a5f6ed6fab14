#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ambulet {

/// Numbers for the names of elements, or for those of attributes: for as many as a document may
/// well have.
class FastNames {
  public:
    using Id = std::uint8_t;
    static constexpr std::size_t most = 128;

    /// Some of the numbers.
    class Set {
      public:
        Set() = default;
        explicit Set(Id id) { (id < 64 ? _low : _high) = std::uint64_t{1} << (id % 64U); }

        void add(Set other) {
            _low |= other._low;
            _high |= other._high;
        }
        bool hasAnyOf(Set other) const {
            return ((_low & other._low) | (_high & other._high)) != 0;
        }

      private:
        std::uint64_t _low = 0;
        std::uint64_t _high = 0;
    };

    /// None where there are too many names by now, or this one is too long.
    std::optional<Id> id(std::string_view name) {
        constexpr std::size_t longest = 500;
        _key.assign(name.substr(0, longest + 1));
        const auto known = _ids.find(_key);
        if (known != _ids.end()) {
            return known->second;
        }
        if (_names.size() == most || name.size() > longest) {
            return std::nullopt;
        }
        const Id id = static_cast<Id>(_names.size());
        _names.push_back(_key);
        _ids.emplace(_key, id);
        return id;
    }

    const std::string& name(Id id) const { return _names[id]; }

  private:
    std::unordered_map<std::string, Id> _ids;
    std::vector<std::string> _names;
    std::string _key;  // kept for its memory
};

/// All the names of a document.
struct FastVocabulary {
    FastNames elements;
    FastNames attributes;
};

}  // namespace ambulet
