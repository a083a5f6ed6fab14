#pragma once

#include <unicode/uversion.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

U_NAMESPACE_BEGIN
class SimpleDateFormat;
U_NAMESPACE_END

namespace ambulet {

/// Reads instants in the form "yyyy-MM-dd HH:mm:ss Z", as 2024-03-09 07:15:02 -0800, in the
/// Gregorian calendar and the same in every locale and time zone.
///
/// One thread at a time.
class InstantReader {
  public:
    InstantReader();
    ~InstantReader();

    /// None for a text in another form, with a field out of range, with a number in exponential
    /// notation, or with more after it than blanks and tabs; and for the years after 32766. Throws
    /// std::runtime_error if ICU is needed and lacks its own data.
    std::optional<std::chrono::sys_seconds> instant(std::string_view text);

    /// The instant of a text in the exact form, each field with all of its digits, in the years
    /// 1583 to 9999; none for any other, whether `instant` reads it or not.
    static std::optional<std::chrono::sys_seconds> exactInstant(std::string_view text);

  private:
    std::optional<std::chrono::sys_seconds> instantInOtherForm(std::string_view text);

    std::unique_ptr<icu::SimpleDateFormat> _format;
};

}  // namespace ambulet
