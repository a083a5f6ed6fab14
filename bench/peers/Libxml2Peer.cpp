// peer_libxml2 FILE: prints the days of an export, read with libxml2's SAX2 push parser.

#include "Peer.h"
#include "import/steps/StepRecord.h"

#include <cstring>
#include <libxml/parser.h>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

namespace {

const char* chars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

/// libxml2 passes five pointers for each attribute: name, prefix, namespace, begin and end of the
/// value.
void startElement(void* toAdd, const xmlChar* name, const xmlChar* /*prefix*/,
                  const xmlChar* /*uri*/, int /*namespaceCount*/, const xmlChar** /*namespaces*/,
                  int attributeCount, int /*defaultedCount*/, const xmlChar** attributes) {
    if (chars(name) != StepRecord::element) {
        return;
    }
    std::string_view type;
    std::string_view startDate;
    std::string_view value;
    for (int index = 0; index < attributeCount; ++index, attributes += 5) {
        const std::string_view text(chars(attributes[3]), chars(attributes[4]));
        if (std::strcmp(chars(attributes[0]), StepRecord::typeAttribute) == 0) {
            type = text;
        } else if (std::strcmp(chars(attributes[0]), StepRecord::startDateAttribute) == 0) {
            startDate = text;
        } else if (std::strcmp(chars(attributes[0]), StepRecord::valueAttribute) == 0) {
            value = text;
        }
    }
    if (type == StepRecord::type && startDate.data() != nullptr && value.data() != nullptr) {
        static_cast<StepSums*>(toAdd)->add(startDate, value);
    }
}

}  // namespace

}  // namespace ambulet

using namespace ambulet;

int main(int argc, char** argv) {
    std::FILE* const file = openedFile(argc, argv);
    StepSums sums;
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = startElement;
    const xmlParserCtxtPtr parser = xmlCreatePushParserCtxt(&handler, &sums, nullptr, 0, argv[1]);
    std::vector<char> block(blockSize);
    bool isFine = true;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file)) {
        isFine = isFine && xmlParseChunk(parser, block.data(), static_cast<int>(count), 0) == 0;
    }
    isFine = xmlParseChunk(parser, nullptr, 0, 1) == 0 && isFine;
    xmlFreeParserCtxt(parser);
    std::fclose(file);
    printDays(sums);
    return isFine ? 0 : 1;
}
