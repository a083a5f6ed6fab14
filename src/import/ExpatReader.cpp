#include "import/ExpatReader.h"

#include "import/Doctype.h"
#include "import/ExpatPass.h"
#include "import/InputFile.h"
#include "import/Splice.h"

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    Splice bytes(file);
    ExpatPass pass(bytes, delegate, _blockSize, _limits);
    std::optional<XMLError> error = pass.run();
    if (error && pass.endedInProlog()) {
        const std::optional<ByteRange> doctype = findDoctype(file);
        if (doctype && doctype->begin <= error->byteOffset) {
            bytes.replace(*doctype, "");
            return ExpatPass(bytes, delegate, _blockSize, _limits).run();
        }
    }
    return error;
}
