#pragma once

#include <unicode/uversion.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

U_NAMESPACE_BEGIN
class SimpleDateFormat;
U_NAMESPACE_END

namespace ambulet {

/// Parses instants of the pattern "yyyy-MM-dd HH:mm:ss Z", for example 2024-03-09 07:15:02 -0800,
/// in the Gregorian calendar; before 15 October 1582, in the Julian one. Locale and time zone make
/// no difference.
///
/// One thread at a time.
class InstantReader {
  public:
    InstantReader();
    ~InstantReader();

    /// The instant that `text` names. Empty if
    /// - the text does not match the pattern,
    /// - a field is out of range or is written with an exponent, such as "1e3",
    /// - the year is after 32766, or
    /// - anything but blanks and tabs follows the offset.
    ///
    /// Throws std::runtime_error if ICU is needed and its data is missing.
    std::optional<std::chrono::sys_seconds> instant(std::string_view text);

    /// The same as `instant` if the text has exactly the form of the example (25 characters) and a
    /// year from 1583 to 9999. Empty for all other texts.
    static std::optional<std::chrono::sys_seconds> exactInstant(std::string_view text);

  private:
    std::optional<std::chrono::sys_seconds> instantInOtherForm(std::string_view text);

    std::unique_ptr<icu::SimpleDateFormat> _format;

    // The last text of the exact form, and the instant of 00:00:00 with its date and offset. Both
    // are usually the same in the next text.
    std::string _lastExact = "1970-01-01 00:00:00 +0000";
    std::chrono::sys_seconds _lastMidnight;
};

}  // namespace ambulet
