#include "text/NumberFormatter.h"

#include "text/IcuStatus.h"
#include "text/Locale.h"

#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <limits>

namespace ambulet {

namespace {

std::unique_ptr<icu::NumberFormat> decimalFormat() {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(
        icu::Locale(numberLocale().c_str()), UNUM_DECIMAL, status));
    orThrow(status);
    return format;
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace

NumberFormatter::NumberFormatter(int minimumFractionDigits, int maximumFractionDigits)
    : _format(decimalFormat()) {
    _format->setMaximumFractionDigits(maximumFractionDigits);
    _format->setMinimumFractionDigits(minimumFractionDigits);
    _format->setRoundingMode(icu::NumberFormat::kRoundHalfEven);
    // The locale decides how many digits a number needs to be grouped: Spanish has 1234 and 12.345.
    if (auto* decimal = dynamic_cast<icu::DecimalFormat*>(_format.get())) {
        decimal->setMinimumGroupingDigits(UNUM_MINIMUM_GROUPING_DIGITS_AUTO);
    }
}

NumberFormatter::NumberFormatter(NumberFormatter&&) noexcept = default;
NumberFormatter& NumberFormatter::operator=(NumberFormatter&&) noexcept = default;
NumberFormatter::~NumberFormatter() = default;

std::string NumberFormatter::string(std::int64_t number) const {
    icu::UnicodeString text;
    return utf8(_format->format(number, text));
}

std::string NumberFormatter::string(double number) const {
    if (number == std::numeric_limits<double>::infinity()) {
        return "+∞";
    }
    icu::UnicodeString text;
    return utf8(_format->format(number, text));
}

}  // namespace ambulet
