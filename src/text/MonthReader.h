#pragma once

#include <unicode/uversion.h>

#include <chrono>
#include <memory>

U_NAMESPACE_BEGIN
class Calendar;
U_NAMESPACE_END

namespace ambulet {

/// Tells in which month of the user's calendar an instant lies, in local time by the system's time
/// zone data. The calendar is the one of the locale for dates at the time the reader is made: the
/// same one in which DateFormatter writes.
///
/// One thread at a time. Making one throws std::runtime_error if ICU lacks its own data.
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

    MonthReader();
    ~MonthReader();

    Month month(std::chrono::sys_seconds instant);

  private:
    std::unique_ptr<icu::Calendar> _calendar;
};

}  // namespace ambulet
