#pragma once

#include "import/ExportReader.h"
#include "import/expat/ExpatReader.h"
#include "import/xml/XMLReaderDelegate.h"
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

/// Days as text, such as "2024-03-09", with their steps.
using Days = std::vector<std::pair<std::string, std::int64_t>>;

Days asText(const std::vector<DailySteps>& days);

/// The result of reading a document.
struct Reading {
    Days days;
    std::optional<XMLError> error;

    friend bool operator==(const Reading&, const Reading&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Reading& reading);
};

/// The name and the attributes of a step record's tag, without "<" and "/>".
std::string stepAttributes(std::string_view startDate, std::string_view value);

/// The tag of a step record, and a line break.
std::string step(std::string_view startDate, std::string_view value);

/// A document with an XML declaration and a root element that contains `content`.
std::string document(std::string_view content);

/// The offset of the first `part` in `text`, plus `more`. `text` must contain `part`.
std::uint64_t byteOf(std::string_view text, std::string_view part, std::uint64_t more = 0);

/// Noon, in UTC, of 9 and 10 March 2024. `ninth`: the first of these days, with 5 steps. `both`:
/// both days, the second with 7 steps.
inline constexpr const char* noon9 = "2024-03-09 12:00:00 +0000";
inline constexpr const char* noon10 = "2024-03-10 12:00:00 +0000";
inline const Days ninth = {{"2024-03-09", 5}};
inline const Days both = {{"2024-03-10", 7}, {"2024-03-09", 5}};

/// A document with the two records of `both`, and `part` between them.
std::string around(std::string_view part);

/// Reads the file with ExpatReader.
Reading readFile(const std::filesystem::path& path, std::size_t blockSize,
                 ExpatReader::Limits limits = {});

/// Reads the file with ExportReader, which uses the fast reader where it can.
Reading readFast(const std::filesystem::path& path, ExportReader::Options options);

/// Reads a file that contains `bytes` with ExpatReader, in blocks of 1, 2, 7 and 4096 bytes, of the
/// default size, and in a single block. If `limits` are the default ones, also reads the file with
/// ExportReader, as `readByAll` does. Expects the same result each time, and returns that result.
Reading read(std::string_view bytes, ExpatReader::Limits limits = {});

/// Reads the file with ExpatReader in blocks of the default size, and with ExportReader, with
/// several numbers of threads and sizes of blocks and chunks, at least `smallestBlock` bytes.
/// Returns the result of ExpatReader. Sets `differences` to a description of the other results that
/// differ from that; empty if none does.
Reading readByAll(const std::filesystem::path& path, std::string& differences,
                  std::size_t smallestBlock = 1);

/// Like `read`, but without blocks and chunks of fewer than 4096 bytes, which take too long for
/// large documents.
Reading readLarge(std::string_view bytes, ExpatReader::Limits limits = {});

}  // namespace ambulet
