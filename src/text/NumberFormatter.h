#pragma once

#include <unicode/uversion.h>

#include <cstdint>
#include <memory>
#include <string>

U_NAMESPACE_BEGIN
class NumberFormat;
U_NAMESPACE_END

namespace ambulet {

/// Turns numbers into texts: decimal, grouped as the user's locale does it, rounded half to even.
/// The locale is the one at the time the formatter is made.
///
/// One thread at a time. Making one throws std::runtime_error if ICU lacks its own data.
class NumberFormatter {
  public:
    NumberFormatter(int minimumFractionDigits, int maximumFractionDigits);

    NumberFormatter(NumberFormatter&&) noexcept;
    NumberFormatter& operator=(NumberFormatter&&) noexcept;
    ~NumberFormatter();

    /// UTF-8.
    std::string string(std::int64_t number) const;

    /// UTF-8. It is the shortest decimal number that reads back as `number` that is rounded (2.675
    /// to 2.68). Positive infinity is "+∞".
    std::string string(double number) const;

  private:
    std::unique_ptr<icu::NumberFormat> _format;
};

}  // namespace ambulet
