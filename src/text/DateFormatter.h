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

/// Formats instants in the user's locale, in that locale's calendar, and in local time. Time zone
/// data is the system's. The locale is read once, when the formatter is made.
///
/// One thread at a time. `mediumDate` and `withPattern` throw std::runtime_error if ICU's data is
/// missing.
class DateFormatter {
  public:
    /// A date without a time of day, in the locale's medium style ("Mar 2, 2025").
    static DateFormatter mediumDate();

    /// `pattern`: Unicode date fields, such as "MMMM yyyy".
    static DateFormatter withPattern(std::string_view pattern);

    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    /// Sets the offsets of local time from UTC that `string` uses from now on.
    void setOffsets(const DayOffsets& offsets) { _offsets = offsets; }
    const DayOffsets& offsets() const { return _offsets; }

    /// The text, in UTF-8.
    std::string string(std::chrono::sys_seconds instant) const;

  private:
    explicit DateFormatter(std::unique_ptr<icu::DateFormat> format);

    std::unique_ptr<icu::DateFormat> _format;
    DayOffsets _offsets;
};

}  // namespace ambulet
