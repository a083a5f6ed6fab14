#pragma once

#include <string>

namespace ambulet {

/// A step record of an export, as XML. `startDate`: for example "2025-03-02 12:00:00 +0000".
inline std::string stepRecord(const std::string& startDate, const std::string& value) {
    return "<Record type=\"HKQuantityTypeIdentifierStepCount\" startDate=\"" + startDate +
           "\" value=\"" + value + "\"/>";
}

}  // namespace ambulet
