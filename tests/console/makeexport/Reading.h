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
        std::string order;  // the names of the attributes, a blank after each
        Attributes attributes;
    };

    std::vector<std::string> children;  // of the root: names, adjacent equal ones once
    std::vector<Record> records;

    /// Where the document is not well-formed or breaks its document type declaration, each kind
    /// once: elements and attributes that are not declared, required attributes that are missing,
    /// children where none may stand. The order and number of children are not checked.
    std::set<std::string> violations;
};

Reading readExport(std::string_view text);

/// The lines that --sums should print: summed record by record.
std::string sumsOf(const Reading& reading, const std::string& zone);

}  // namespace makeexport
