#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace makeexport {

/// An export as expat sees it: a second, independent opinion of what was written.
struct Reading {
    struct StepRecord {
        std::string startDate;
        std::string value;
        std::string parent;
    };

    std::string error;                         // empty: well-formed
    std::map<std::string, int> elements;       // how many of a name there are
    std::map<std::string, int> topLevelTypes;  // how many Records of a type there are at top level
    std::vector<std::string> children;         // of the root, by name, a run of one name once
    std::vector<std::string> recordTypes;      // of top level, a run of one type once
    std::vector<std::string> sourceNames;      // of Records, each that occurs once
    // Of Records, each that occurs once, "type sourceName…".
    std::vector<std::string> attributeOrders;
    std::vector<StepRecord> steps;
};

Reading readExport(std::string_view text);

/// What a right reader finds, record by record, in the form of the printed sums.
std::string sumsOf(const std::vector<Reading::StepRecord>& steps, const std::string& zone);

}  // namespace makeexport
