#include "makeexport/Export.h"
#include "makeexport/StepSums.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace makeexport {

namespace {

constexpr const char* help =
    R"(Usage: makeexport [--seed N] [--size SIZE] [--sums ZONE=FILE]... FILE

Writes a made-up export of a phone's health data to FILE; - is standard output.
The export covers the ten years up to 2025-09-30: a large one is dense, a small
one sparse. The same seed and size always give the same bytes.

  --seed N          a number that selects the export; 1 if not given
  --size SIZE       about how large: from 1K to 8G (powers of 1024), or a number of
                    bytes; 20M if not given. Under 64K the export has no element
                    declarations.
  --sums ZONE=FILE  also writes the steps of each day in a time zone, such as
                    Asia/Kolkata. One line per day, newest first: yyyy-MM-dd,
                    a tab, the steps. A day whose midnight the zone's clocks skip
                    has no line. May be given several times.

Exit status: 0 done, 1 a file cannot be written, 2 the arguments are wrong.
)";

constexpr std::uint64_t smallest = std::uint64_t{1} << 10;
constexpr std::uint64_t largest = std::uint64_t{8} << 30;
constexpr int cannotWrite = 1;
constexpr int wrongArguments = 2;

struct Arguments {
    bool help = false;
    std::uint64_t seed = 1;
    std::uint64_t size = std::uint64_t{20} << 20;
    std::vector<std::pair<std::string, std::string>> sums;  // pairs of time zone and file
    std::string path;
    std::string wrong;  // an error in the command line; empty if there is none
};

std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

/// The size in bytes. The suffixes K, M and G stand for 1024, 1024² and 1024³ bytes. Nothing if the
/// text is no size from `smallest` to `largest`.
std::optional<std::uint64_t> sizeInBytes(std::string_view text) {
    constexpr std::string_view suffixes = "KMG";
    const std::size_t suffix = text.empty() ? std::string_view::npos : suffixes.find(text.back());
    const bool hasSuffix = suffix != std::string_view::npos;
    const auto value = number(text.substr(0, text.size() - (hasSuffix ? 1 : 0)));
    const unsigned shift = hasSuffix ? 10 * static_cast<unsigned>(suffix + 1) : 0;
    const bool fits = value && *value <= largest >> shift && *value << shift >= smallest;
    return fits ? std::optional(*value << shift) : std::nullopt;
}

void set(Arguments& arguments, const std::string& option, const std::string& value) {
    if (option == "--seed") {
        const auto seed = number(value);
        arguments.seed = seed.value_or(0);
        arguments.wrong = seed ? "" : "--seed is a number from 0 to 2^64-1, not " + value;
    } else if (option == "--size") {
        const auto size = sizeInBytes(value);
        arguments.size = size.value_or(0);
        arguments.wrong =
            size ? "" : "--size is from 1K to 8G (without K, M or G, it is in bytes), not " + value;
    } else if (option == "--sums") {
        const std::size_t equals = std::min(value.find('='), value.size() - 1);
        const std::string zone = value.substr(0, equals);
        arguments.sums.emplace_back(zone, value.substr(equals + 1));
        if (arguments.sums.back().second.empty()) {
            arguments.wrong = "--sums is ZONE=FILE, not " + value;
        } else if (!std::filesystem::is_regular_file("/usr/share/zoneinfo/" + zone)) {
            arguments.wrong = "the system knows no time zone " + zone;
        }
    } else {
        arguments.wrong = "unknown option " + option;
    }
}

Arguments readArguments(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size() && arguments.wrong.empty(); ++i) {
        const bool isOption = words[i].size() > 1 && words[i].front() == '-';
        if (words[i] == "--help") {
            arguments.help = true;
        } else if (isOption && ++i == words.size()) {
            arguments.wrong = words.back() + " without a value";
        } else if (isOption) {
            set(arguments, words[i - 1], words[i]);
        } else if (!arguments.path.empty()) {
            arguments.wrong = "more than one FILE: " + words[i];
        } else {
            arguments.path = words[i];
        }
    }
    if (arguments.path.empty() && arguments.wrong.empty()) {
        arguments.wrong = "no FILE";
    }
    return arguments;
}

/// Creates a file and calls `write` with it; "-" is standard output. On failure prints the reason
/// and returns false.
bool makeFile(const std::string& path, auto write) {
    std::FILE* file = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    const bool isWritten = file != nullptr && write(file);
    if (file == nullptr || (file == stdout ? std::fflush : std::fclose)(file) != 0 || !isWritten) {
        std::fprintf(stderr, "makeexport: cannot write %s: %s\n", path.c_str(),
                     std::strerror(errno));
        return false;
    }
    return true;
}

bool makeFiles(const Arguments& arguments) {
    StepSums sums;
    return makeFile(arguments.path,
                    [&](std::FILE* file) {
                        return writeExport(arguments.seed, arguments.size, file, sums);
                    }) &&
           std::ranges::all_of(arguments.sums, [&](const auto& zoneAndPath) {
               return makeFile(zoneAndPath.second, [&](std::FILE* file) {
                   return std::fputs(sums.lines(zoneAndPath.first).c_str(), file) >= 0;
               });
           });
}

}  // namespace

}  // namespace makeexport

int main(int argc, char** argv) {
    using namespace makeexport;
    const Arguments arguments = readArguments({argv + 1, argv + argc});
    if (arguments.help) {
        std::fputs(help, stdout);
        return 0;
    }
    if (!arguments.wrong.empty()) {
        std::fprintf(stderr, "makeexport: %s; try makeexport --help\n", arguments.wrong.c_str());
        return wrongArguments;
    }
    return makeFiles(arguments) ? 0 : cannotWrite;
}
