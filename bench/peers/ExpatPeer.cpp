// peer_expat FILE: prints the days of an export, read with expat alone.

#include "Peer.h"
#include "import/steps/StepRecord.h"

#include <expat.h>

using namespace ambulet;

int main(int argc, char** argv) {
    std::FILE* const file = openedFile(argc, argv);
    StepSums sums;
    const XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &sums);
    XML_SetStartElementHandler(
        parser, [](void* toAdd, const XML_Char* name, const XML_Char** attributes) {
            StepRecord::add(*static_cast<StepSums*>(toAdd), name, XMLAttributes(attributes));
        });
    bool isFine = true;
    for (std::size_t count = 1; count > 0 && isFine;) {
        void* const block = XML_GetBuffer(parser, static_cast<int>(blockSize));
        count = std::fread(block, 1, blockSize, file);
        isFine = XML_ParseBuffer(parser, static_cast<int>(count), count == 0) == XML_STATUS_OK;
    }
    XML_ParserFree(parser);
    std::fclose(file);
    printDays(sums);
    return isFine ? 0 : 1;
}
