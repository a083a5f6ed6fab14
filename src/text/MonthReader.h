#pragma once

#include "text/DayOffsets.h"

#include <unicode/uversion.h>

#include <chrono>
#include <memory>

U_NAMESPACE_BEGIN
class Calendar;
U_NAMESPACE_END

namespace ambulet {

/// Tells in which month of the user's calendar an instant lies, in local time. The calendar is the
/// one that a DateFormatter made at the same time writes in.
///
/// One thread at a time. Making one throws std::runtime_error if ICU's own data are missing.
class MonthReader {
  public:
    /// Two are equal for the same month of the same year, and for no others.
    struct Month {
        int era;
        int year;
        int month;
        bool leap;  ///< in calendars that repeat a month

        friend bool operator==(const Month&, const Month&) = default;
    };

    /// `offsets`: what local time is.
    explicit MonthReader(DayOffsets offsets = {});
    ~MonthReader();

    Month month(std::chrono::sys_seconds instant);

  private:
    std::unique_ptr<icu::Calendar> _calendar;
    DayOffsets _offsets;
};

}  // namespace ambulet
