#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Numbers for the names of elements and attributes, so many that a document may well have.
class FastNames {
  public:
    using Id = std::uint16_t;

    /// None where there are too many names by now, or this one is too long.
    std::optional<Id> id(std::string_view name) {
        constexpr std::size_t most = 2000;
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
