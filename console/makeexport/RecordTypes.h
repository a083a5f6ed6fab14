#pragma once

#include "makeexport/Sources.h"

#include <chrono>
#include <span>
#include <string_view>

namespace makeexport {

/// Numbers from `low` to `high`, times 10 to the power of `decimals`: the low ones are the more
/// frequent.
struct Range {
    int low = 0;
    int high = 0;
    int decimals = 0;
};

/// The part of a day in which records start, from its local midnight on; it may reach into the next
/// day.
struct Hours {
    std::chrono::minutes from;
    std::chrono::minutes until;
};

struct Length {
    std::chrono::seconds shortest;
    std::chrono::seconds longest;
};

/// A MetadataEntry that every `oneIn`th record has, with any of the values.
struct Metadata {
    std::string_view key;
    std::span<const std::string_view> values;
    unsigned oneIn;
};

/// How the records of a type look. The texts stand in XML as they are.
struct RecordType {
    std::string_view name;  // without the prefix of its kind
    unsigned share;         // of the bytes of an export, in 10,000
    int sinceYear;          // it is recorded from the start of this year on
    std::span<const Maker> makers;
    Hours hours;
    Length length;
    std::string_view unit;                              // empty: a category, which has no unit
    Range range = {};                                   // of a quantity
    std::span<const std::string_view> categories = {};  // the values of a category
    const Metadata* metadata = nullptr;
    bool beats = false;  // a HeartRateVariabilityMetadataList lies inside

    std::string_view prefix() const;
};

/// All types of the top-level records, in the order of an export. Their shares are those of all
/// bytes between the prolog and the ActivitySummaries but for the two shares below, with which they
/// come to 10,000.
std::span<const RecordType> recordTypes();

inline constexpr unsigned correlationShare = 40;
inline constexpr unsigned workoutShare = 100;

/// One of `recordTypes()`; `name` is without the prefix and must be there.
const RecordType& recordType(std::string_view name);

}  // namespace makeexport
