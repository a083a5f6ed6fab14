#pragma once

#include "makeexport/Clock.h"
#include "makeexport/RecordTypes.h"

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace makeexport {

/// The three dates of nearly everything in an export.
struct Times {
    std::chrono::sys_seconds created;
    std::chrono::sys_seconds start;
    std::chrono::sys_seconds end;
};

/// ` creationDate="…" startDate="…" endDate="…"`.
void appendTimes(std::string& text, DateText& dates, const Times& times);

void appendMetadata(std::string& text, std::string_view indent, std::string_view key,
                    std::string_view value);

/// Writes the Record elements of one type, with their children. What stands the same in all records
/// of a source is put together once. The type and the clock outlive it.
class RecordText {
  public:
    RecordText(const RecordType& type, const Clock& clock, Random random)
        : _type(type), _clock(clock), _dates(clock), _random(random) {}

    /// `indent` is what a line of it begins with, `value` stands in XML as it is.
    void append(std::string& text, std::string_view indent, const Source& source,
                const Times& times, std::string_view value);

  private:
    const std::string& head(const Source& source);
    void appendBeats(std::string& text, std::string_view indent, std::chrono::sys_seconds start);

    const RecordType& _type;
    const Clock& _clock;
    DateText _dates;
    Random _random;
    std::vector<std::pair<const Source*, std::string>> _heads;
};

}  // namespace makeexport
