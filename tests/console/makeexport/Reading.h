#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace makeexport {

/// An export as expat reads it.
struct Reading {
    using Attributes = std::map<std::string, std::string>;
    struct Record {
        std::string parent;
        std::string order;  // the names of the attributes, each followed by a blank
        Attributes attributes;
    };

    std::vector<std::string> children;  // names of the root's children, without adjacent duplicates
    std::vector<Record> records;

    /// Errors of well-formedness, and violations of the document type declaration:
    /// - elements and attributes that are not declared,
    /// - missing required attributes,
    /// - elements in a parent that may not contain them.
    ///
    /// Equal errors are reported once. The order and number of children are not checked.
    std::set<std::string> violations;
};

Reading readExport(std::string_view text);

/// The expected output of --sums, computed record by record.
std::string sumsOf(const Reading& reading, const std::string& zone);

}  // namespace makeexport
