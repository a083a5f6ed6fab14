#include "import/ExpatReader.h"

#include "import/ExpatPass.h"
#include "import/InputFile.h"
#include "import/Splice.h"

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    Splice bytes(file);
    ExpatPass pass(bytes, delegate, _blockSize, _limits);
    std::optional<XMLError> error = pass.run();
    if (error && pass.leaveOutDoctype(bytes, file, *error)) {
        return ExpatPass(bytes, delegate, _blockSize, _limits).run();
    }
    return error;
}
