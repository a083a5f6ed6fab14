#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace makeexport {

struct SumsWanted {
    std::string zone;
    std::string path;

    friend bool operator==(const SumsWanted&, const SumsWanted&) = default;
};

/// What the command line asks for.
struct Arguments {
    bool help = false;
    std::uint64_t seed = 1;
    std::uint64_t size = std::uint64_t{20} << 20;
    std::vector<SumsWanted> sums;
    std::string path;
};

/// Why a command line cannot be followed, in words for the user.
struct BadArguments {
    std::string reason;
};

/// `words`: without the program's name.
std::variant<Arguments, BadArguments> readArguments(std::span<const char* const> words);

/// What --help prints.
const char* helpText();

}  // namespace makeexport
