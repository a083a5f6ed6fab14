#pragma once

#include "import/ExportReader.h"
#include "import/expat/ExpatReader.h"
#include "import/xml/XMLReader.h"
#include "model/DailySteps.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ambulet {

/// Days as a test writes them: "2024-03-09" and the steps.
using Days = std::vector<std::pair<std::string, std::int64_t>>;

Days asText(const std::vector<DailySteps>& days);

/// What came of reading a document.
struct Reading {
    Days days;
    std::optional<XMLError> error;

    friend bool operator==(const Reading&, const Reading&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Reading& reading);
};

/// An attribute text of a step record's tag, without the tag's ends.
std::string stepAttributes(std::string_view startDate, std::string_view value);

/// A step record.
std::string step(std::string_view startDate, std::string_view value);

/// `content` in a root element, after an XML declaration.
std::string document(std::string_view content);

/// Where `part` first stands in `text`, which has it; plus `more`.
std::uint64_t byteOf(std::string_view text, std::string_view part, std::uint64_t more = 0);

/// Two instants, each at noon of its day in UTC, and the days of 5 steps on the first and, in
/// `both`, 7 on the second.
inline constexpr const char* noon9 = "2024-03-09 12:00:00 +0000";
inline constexpr const char* noon10 = "2024-03-10 12:00:00 +0000";
inline const Days ninth = {{"2024-03-09", 5}};
inline const Days both = {{"2024-03-10", 7}, {"2024-03-09", 5}};

/// A document in which `part` stands between the records of `both`.
std::string around(std::string_view part);

Reading readFile(const std::filesystem::path& path, std::size_t blockSize,
                 ExpatReader::Limits limits = {});

/// The same by the fast road.
Reading readFast(const std::filesystem::path& path, ExportReader::Options options);

/// Reads the file `bytes` in blocks of 1, 2, 7, 4096 bytes and of the usual size, and in one, which
/// must not make a difference; and, where the limits are the usual ones, by the fast road too, in
/// several blocks and by several threads.
Reading read(std::string_view bytes, ExpatReader::Limits limits = {});

/// Reads the file at `path` by expat in blocks of the usual size, and by the fast road in all the
/// ways of `read`, without those in smaller blocks or chunks than `smallestBlock`. What expat came
/// to; `differences` says how the others differ from it, and is empty if none does.
Reading readByAll(const std::filesystem::path& path, std::string& differences,
                  std::size_t smallestBlock = 1);

/// The same for a document so large that blocks of a few bytes would take too long.
Reading readLarge(std::string_view bytes, ExpatReader::Limits limits = {});

}  // namespace ambulet
