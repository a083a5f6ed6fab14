#pragma once

#include "import/expat/Declarations.h"
#include "import/expat/ExpatParser.h"
#include "import/xml/XMLReaderDelegate.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

namespace ambulet {

/// Parses one document, on one thread: reports the start tags to a delegate, and returns the first
/// error, with its offset in the file. It can pause after the root's start tag.
class DocumentParser : private Declarations {
  public:
    /// Start tags before the end of the last replacement in `bytes` are not reported.
    DocumentParser(const PatchedFile& bytes, XMLReaderDelegate& delegate, std::size_t blockSize,
                   ExpatLimits limits);

    /// Reads to the end of the root's start tag, which is reported, or to the first error.
    std::optional<XMLError> readProlog();

    /// Reads to the end, or to the first error. This and readProlog throw what the delegate throws.
    std::optional<XMLError> read();

    /// The root's start tag.
    struct Root {
        std::string name;
        std::uint64_t end = 0;  // the end of the tag, as an offset in the patched bytes
        bool isEmpty = false;   // whether it is an empty-element tag
    };

    /// Empty until the root's start tag has been read.
    const std::optional<Root>& root() const { return _root; }

    const Declarations& declarations() const { return *this; }

  private:
    static DocumentParser& of(void* userData);
    static void XMLCALL startElement(void* userData, const XML_Char* name,
                                     const XML_Char** attributes);
    static void XMLCALL endElement(void* userData, const XML_Char* name);
    static void XMLCALL afterRoot(void* userData, const XML_Char* text, int length);
    void report(const XML_Char* name, const XML_Char** attributes);
    XMLError placed(XMLError error) const;
    bool isMarkup(std::uint64_t offset) const;

    const PatchedFile& _bytes;
    XMLReaderDelegate& _delegate;
    ExpatParser _parser;
    bool _pausesAtRoot = false;
    std::uint64_t _depth = 0;  // the number of open elements
    std::optional<Root> _root;
    std::exception_ptr _thrown;  // thrown by the delegate

    // Empty until the root has ended. Then the end of the last valid token.
    std::optional<std::uint64_t> _goodAfterRoot;
};

}  // namespace ambulet
