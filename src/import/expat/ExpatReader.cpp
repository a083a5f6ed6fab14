#include "import/expat/ExpatReader.h"

#include "import/expat/ExpatDocument.h"

namespace ambulet {

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    return ExpatDocument(file, delegate, _blockSize, _limits).read();
}

}  // namespace ambulet
