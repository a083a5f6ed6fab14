#pragma once

#include "import/expat/ExpatMemory.h"
#include "import/expat/ExpatReader.h"
#include "import/xml/PatchedFile.h"

#include <expat.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>

namespace ambulet {

/// What a document has before the content of its root element, as far as a reader must know that is
/// to go on without expat.
struct Prolog {
    std::uint64_t end = 0;  // where the root's start tag ends, which is counted in
    std::string rootName;

    /// XML 1.0 in UTF-8, and no entity, attribute default or attribute type is declared that would
    /// make a difference to what is read in the root element.
    bool isPlain = true;
};

/// Expat's run over some bytes from their beginning. For one use, on one thread.
class ExpatPass {
  public:
    ExpatPass(const PatchedFile& bytes, XMLReaderDelegate& delegate, std::size_t blockSize,
              ExpatReader::Limits limits);

    /// Reads to the end or to the first error. Start tags that stand in a replacing text of the
    /// splice are not reported.
    std::optional<XMLError> run();

    /// Reads up to the end of the root's start tag, which is reported, or to the first error. One
    /// that has not ended after about a megabyte is given up, as not plain.
    std::optional<XMLError> readProlog(Prolog& prolog);

    /// Leaves out the document type declaration of `file` from `bytes`, in which nothing is
    /// replaced, if the error with which the run over them ended may be its fault. False if not.
    bool leaveOutDoctype(PatchedFile& bytes, const InputFile& file, const XMLError& error) const;

    /// The error is that of an expat that was refused memory.
    bool ranOutOfMemory() const { return XML_GetErrorCode(_parser.get()) == XML_ERROR_NO_MEMORY; }

  private:
    static void XMLCALL startElement(void* pass, const XML_Char* name, const XML_Char** attributes);
    static void XMLCALL endElement(void* pass, const XML_Char* name);
    static void XMLCALL afterRoot(void* pass, const XML_Char* text, int length);
    static void XMLCALL endDoctype(void* pass);
    void watchProlog();
    void endProlog(const char* rootName);

    std::uint64_t position() const;
    std::uint64_t positionAfter() const;
    std::size_t unfinished();
    std::size_t nextCount(std::size_t unfinished) const;
    std::size_t nextRoom(std::size_t unfinished, std::size_t count);
    void* room(std::size_t count);
    XMLError parserError() const;
    bool isMarkup(std::uint64_t offset) const;

    const PatchedFile& _bytes;
    XMLReaderDelegate& _delegate;
    std::size_t _blockSize;
    ExpatReader::Limits _limits;

    ExpatMemory _memory;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> _parser;
    std::uint64_t _given = 0;       // bytes given to the parser
    std::uint64_t _tokenBegin = 0;  // of which those from here on are still to be understood
    bool _hasLargeRoom = false;
    bool _doctypeEnded = false;
    bool _rootStarted = false;
    std::uint64_t _depth = 0;                     // of the open elements
    std::optional<std::uint64_t> _goodAfterRoot;  // once it has ended, up to where all is well
    Prolog* _prolog = nullptr;                    // null unless nothing but the prolog is wanted
    std::exception_ptr _thrown;                   // by the delegate
};

}  // namespace ambulet
