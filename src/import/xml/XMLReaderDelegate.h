#pragma once

#include "import/xml/XMLError.h"

#include <cstring>
#include <optional>
#include <string_view>

namespace ambulet {

/// The interface of the XML readers. A reader reports start tags to a delegate, in document order,
/// each as soon as it is complete. The result of reading is the first error, if there is one.

/// The attributes of one start tag, including those that the document type declaration adds.
/// References are resolved and white space is normalised. The object and its texts are valid only
/// while the tag is reported.
class XMLAttributes {
  public:
    /// `namesAndValues`: alternately a name and a value, in UTF-8, and at the end a null pointer.
    explicit XMLAttributes(const char* const* namesAndValues) : _namesAndValues(namesAndValues) {}

    /// The value of the attribute `name`. Nothing if the tag has no such attribute.
    std::optional<std::string_view> value(const char* name) const {
        for (const char* const* each = _namesAndValues; *each != nullptr; each += 2) {
            // Most names differ in the first character, so strcmp is seldom called.
            if (each[0][0] == name[0] && std::strcmp(each[0], name) == 0) {
                return each[1];
            }
        }
        return std::nullopt;
    }

  private:
    const char* const* _namesAndValues;
};

/// Receives the start tags, on the thread that reads.
class XMLReaderDelegate {
  public:
    virtual ~XMLReaderDelegate() = default;

    /// `name`: the name of the tag as it is written, including a prefix, in UTF-8.
    virtual void didStartElement(std::string_view name, const XMLAttributes& attributes) = 0;
};

}  // namespace ambulet
