#pragma once

#include <unicode/uversion.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

U_NAMESPACE_BEGIN
class DateFormat;
U_NAMESPACE_END

namespace ambulet {

/// Turns instants into texts: in the user's locale and in that locale's own calendar, in local time
/// by the system's time zone data. The locale is the one at the time the formatter is made.
///
/// One thread at a time. Making one throws std::runtime_error if ICU lacks its own data.
class DateFormatter {
  public:
    /// A date without a time of day, in the locale's medium style ("Mar 2, 2025").
    static DateFormatter mediumDate();

    /// `pattern` in Unicode's date fields, such as "MMMM yyyy", taken as it stands.
    static DateFormatter withPattern(std::string_view pattern);

    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    /// UTF-8.
    std::string string(std::chrono::sys_seconds instant) const;

  private:
    explicit DateFormatter(std::unique_ptr<icu::DateFormat> format);

    std::unique_ptr<icu::DateFormat> _format;
};

}  // namespace ambulet
