#pragma once

#include <sstream>
#include <string>

namespace makeexport {

/// The first line in which two texts differ, as both have it; empty where they are the same. A
/// failure that shows two texts of thousands of lines tells nobody anything.
inline std::string firstDifference(const std::string& one, const std::string& other) {
    std::istringstream ones(one);
    std::istringstream others(other);
    std::string a;
    std::string b;
    while (ones || others) {
        a = std::getline(ones, a) ? a : "(nothing)";
        b = std::getline(others, b) ? b : "(nothing)";
        if (a != b) {
            a += " | ";
            a += b;
            return a;
        }
    }
    return one == other ? "" : "the ends of their last lines";
}

}  // namespace makeexport
