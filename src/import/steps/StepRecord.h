#pragma once

#include "import/steps/StepSums.h"
#include "import/xml/XMLReaderDelegate.h"

#include <string_view>

namespace ambulet {

/// The element name, the type and the attributes of a step record.
namespace StepRecord {

inline constexpr std::string_view element = "Record";
inline constexpr std::string_view type = "HKQuantityTypeIdentifierStepCount";
inline constexpr const char* typeAttribute = "type";
inline constexpr const char* startDateAttribute = "startDate";
inline constexpr const char* valueAttribute = "value";

/// Adds the tag to the sums if it is a step record.
inline void add(StepSums& sums, std::string_view name, const XMLAttributes& attributes) {
    if (name != element || attributes.value(typeAttribute) != type) {
        return;
    }
    const auto startDate = attributes.value(startDateAttribute);
    const auto value = attributes.value(valueAttribute);
    if (startDate && value) {
        sums.add(*startDate, *value);
    }
}

}  // namespace StepRecord

}  // namespace ambulet
