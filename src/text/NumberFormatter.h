#pragma once

#include <unicode/uversion.h>

#include <cstdint>
#include <memory>
#include <string>

U_NAMESPACE_BEGIN
class NumberFormat;
U_NAMESPACE_END

namespace ambulet {

/// Formats numbers in decimal notation by the rules of the user's locale, with groups of digits,
/// rounded half to even. The locale is read once, when the formatter is made.
///
/// One thread at a time. The constructor throws std::runtime_error if ICU's data is missing.
class NumberFormatter {
  public:
    NumberFormatter(int minimumFractionDigits, int maximumFractionDigits);

    NumberFormatter(NumberFormatter&&) noexcept;
    NumberFormatter& operator=(NumberFormatter&&) noexcept;
    ~NumberFormatter();

    /// The text, in UTF-8.
    std::string string(std::int64_t number) const;

    /// The text, in UTF-8. The number that is rounded is the shortest decimal number that reads
    /// back as `number`, so 2.675 with two decimals is 2.68. Positive infinity is "+∞".
    std::string string(double number) const;

  private:
    std::unique_ptr<icu::NumberFormat> _format;
};

}  // namespace ambulet
