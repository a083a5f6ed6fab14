#pragma once

#include "import/xml/XMLError.h"

#include <cstring>
#include <optional>
#include <string_view>

namespace ambulet {

/// The interface of the readers of XML. A reader reports every start tag to a delegate, in the
/// order of the document, as soon as the tag is complete. It ends without an error where the
/// document is well-formed, else with the first error.

/// The attributes of one start tag: those written in it and those that the document type
/// declaration adds. References are resolved and white space is normalised. A view: it and the
/// texts it gives are valid only while the tag is reported.
class XMLAttributes {
  public:
    /// `namesAndValues` alternates names and values, in UTF-8, and ends with a null pointer.
    explicit XMLAttributes(const char* const* namesAndValues) : _namesAndValues(namesAndValues) {}

    /// None where the tag has no such attribute.
    std::optional<std::string_view> value(const char* name) const {
        for (const char* const* each = _namesAndValues; *each != nullptr; each += 2) {
            // The first character tells most names apart without a call.
            if (each[0][0] == name[0] && std::strcmp(each[0], name) == 0) {
                return each[1];
            }
        }
        return std::nullopt;
    }

  private:
    const char* const* _namesAndValues;
};

/// Is told the start tags, on the thread that reads.
class XMLReaderDelegate {
  public:
    virtual ~XMLReaderDelegate() = default;

    /// `name` is the tag's name as it is written, in UTF-8, prefix and all.
    virtual void didStartElement(std::string_view name, const XMLAttributes& attributes) = 0;
};

}  // namespace ambulet
