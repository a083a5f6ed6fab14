#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace makeexport {

/// Where a document breaks its own document type declaration, each kind of break once: elements and
/// attributes that are not declared, required ones that lack, children where they may not stand,
/// attributes that are not CDATA. Not looked at: the order and the number of children.
std::vector<std::string> violations(std::string_view document);

}  // namespace makeexport
