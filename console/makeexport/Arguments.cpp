#include "makeexport/Arguments.h"

#include "makeexport/Export.h"
#include "makeexport/StepSums.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace makeexport {

namespace {

/// The whole of `text` as a decimal number.
std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

/// Bytes, or with K, M or G at the end 1024, 1024² or 1024³ of them.
std::optional<std::uint64_t> sizeInBytes(std::string_view text) {
    constexpr std::string_view suffixes = "KMG";
    unsigned shift = 0;
    if (!text.empty()) {
        const std::size_t suffix = suffixes.find(text.back());
        if (suffix != std::string_view::npos) {
            shift = 10 * static_cast<unsigned>(suffix + 1);
            text.remove_suffix(1);
        }
    }
    const std::optional<std::uint64_t> value = number(text);
    if (!value || *value > std::numeric_limits<std::uint64_t>::max() >> shift) {
        return std::nullopt;
    }
    return *value << shift;
}

class Reader {
  public:
    explicit Reader(std::span<const char* const> words) : _words(words) {}

    std::variant<Arguments, BadArguments> read() {
        bool optionsEnded = false;
        while (_next < _words.size() && _wrong.empty() && !_arguments.help) {
            const std::string word = _words[_next++];
            if (!optionsEnded && word == "--") {
                optionsEnded = true;
            } else if (!optionsEnded && word.size() > 1 && word.front() == '-') {
                readOption(word);
            } else if (!_arguments.path.empty()) {
                _wrong = "more than one FILE: " + word;
            } else {
                _arguments.path = word;
            }
        }
        if (_wrong.empty() && !_arguments.help) {
            checkFiles();
        }
        if (!_wrong.empty()) {
            return BadArguments{_wrong};
        }
        return _arguments;
    }

  private:
    void readOption(const std::string& option) {
        if (option == "--help") {
            _arguments.help = true;
        } else if (option != "--seed" && option != "--size" && option != "--sums") {
            _wrong = "unknown option " + option;
        } else if (_next == _words.size()) {
            _wrong = option + " without a value";
        } else {
            readValue(option, _words[_next++]);
        }
    }

    void readValue(const std::string& option, const std::string& value) {
        if (option == "--seed") {
            const std::optional<std::uint64_t> seed = number(value);
            if (!seed) {
                _wrong = "--seed is a number from 0 to 2^64-1, not " + value;
            }
            _arguments.seed = seed.value_or(0);
        } else if (option == "--size") {
            const std::optional<std::uint64_t> size = sizeInBytes(value);
            if (!size || *size < smallestExport || *size > largestExport) {
                _wrong = "--size is from 1K to 8G, as 500K, 100M, 1G or in bytes, not " + value;
            }
            _arguments.size = size.value_or(0);
        } else {
            readSums(value);
        }
    }

    void readSums(const std::string& value) {
        const std::size_t equals = value.find('=');
        if (equals == std::string::npos || equals + 1 == value.size()) {
            _wrong = "--sums is ZONE=FILE, not " + value;
            return;
        }
        _arguments.sums.push_back({value.substr(0, equals), value.substr(equals + 1)});
        if (!isTimeZone(_arguments.sums.back().zone)) {
            _wrong = "the system knows no time zone " + _arguments.sums.back().zone;
        }
    }

    void checkFiles() {
        const auto toStandardOutput =
            std::ranges::count(_arguments.sums, "-", &SumsWanted::path) + (_arguments.path == "-");
        if (_arguments.path.empty()) {
            _wrong = "no FILE";
        } else if (toStandardOutput > 1) {
            _wrong = "only one file can be standard output";
        }
    }

    std::span<const char* const> _words;
    std::size_t _next = 0;
    Arguments _arguments;
    std::string _wrong;
};

}  // namespace

std::variant<Arguments, BadArguments> readArguments(std::span<const char* const> words) {
    return Reader(words).read();
}

const char* helpText() {
    return R"(Usage: makeexport [--seed N] [--size SIZE] [--sums ZONE=FILE]... FILE

Writes a made-up export of a phone's health data to FILE; - is standard output.
It tells of the ten years up to 2025-09-30 whatever its size: a large one is
dense, a small one sparse. The same seed and size give the same bytes, always.

  --seed N          which export, a number; 1 if not given
  --size SIZE       from 1K to 8G, as 500K, 100M, 1G (of 1024) or in bytes; 20M
                    if not given. The export is never longer, and less than 300
                    bytes shorter; under 64K less than 500. Under 64K it
                    declares no elements in its document type declaration.
  --sums ZONE=FILE  also writes the steps of each day in a time zone, such as
                    Asia/Kolkata, that a right reader finds in the export: a
                    line a day, yyyy-MM-dd, a tab, the steps, newest first.
                    A day whose midnight the zone leaves out has no line. May
                    be given several times.

Exit status: 0 done, 1 a file cannot be written, 2 the arguments are wrong.
)";
}

}  // namespace makeexport
