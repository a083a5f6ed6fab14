#pragma once

#include "text/DayOffsets.h"

#include <unicode/uversion.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

U_NAMESPACE_BEGIN
class DateFormat;
U_NAMESPACE_END

namespace ambulet {

/// Turns instants into texts, in the user's locale, in that locale's calendar, and in local time by
/// the system's time zone data. The locale is the one at the time the formatter is made.
///
/// One thread at a time. Making one throws std::runtime_error if ICU's own data are missing.
class DateFormatter {
  public:
    /// A date without a time of day, in the locale's medium style ("Mar 2, 2025").
    static DateFormatter mediumDate();

    /// A pattern of Unicode's date fields, such as "MMMM yyyy".
    static DateFormatter withPattern(std::string_view pattern);

    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    /// From now on these offsets say what local time is.
    void setOffsets(const DayOffsets& offsets) { _offsets = offsets; }
    const DayOffsets& offsets() const { return _offsets; }

    /// UTF-8.
    std::string string(std::chrono::sys_seconds instant) const;

  private:
    explicit DateFormatter(std::unique_ptr<icu::DateFormat> format);

    std::unique_ptr<icu::DateFormat> _format;
    DayOffsets _offsets;
};

}  // namespace ambulet
