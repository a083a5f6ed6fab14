#pragma once

#include "import/steps/StepSums.h"
#include "import/xml/XMLReader.h"

#include <string_view>

namespace ambulet {

/// The names by which a step record is known, and where it keeps its steps.
namespace StepRecord {

inline constexpr std::string_view element = "Record";
inline constexpr std::string_view type = "HKQuantityTypeIdentifierStepCount";
inline constexpr const char* typeAttribute = "type";
inline constexpr const char* startDateAttribute = "startDate";
inline constexpr const char* valueAttribute = "value";

/// Adds the record that the tag holds, if it holds one.
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
