#pragma once

#include "text/DayOffsets.h"

#include <unicode/uversion.h>

#include <chrono>
#include <memory>

U_NAMESPACE_BEGIN
class Calendar;
U_NAMESPACE_END

namespace ambulet {

/// Finds the month of an instant, in local time and in the calendar of the user's locale, which is
/// also the calendar of a DateFormatter. The locale is read once, when the reader is made.
///
/// One thread at a time. The constructor throws std::runtime_error if ICU's data is missing.
class MonthReader {
  public:
    /// Two values are equal if they are the same month of the same year.
    struct Month {
        int era;
        int year;
        int month;
        bool leap;  ///< tells apart two months with the same number, in some calendars

        friend bool operator==(const Month&, const Month&) = default;
    };

    /// `offsets`: local time minus UTC.
    explicit MonthReader(DayOffsets offsets = {});
    ~MonthReader();

    Month month(std::chrono::sys_seconds instant);

  private:
    std::unique_ptr<icu::Calendar> _calendar;
    DayOffsets _offsets;
};

}  // namespace ambulet
