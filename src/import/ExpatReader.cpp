#include "import/ExpatReader.h"

#include "import/ExpatPass.h"
#include "import/InputFile.h"
#include "import/Splice.h"

#include <memory>

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    Splice bytes(file);
    auto pass = std::make_unique<ExpatPass>(bytes, delegate, _blockSize, _limits);
    std::optional<XMLError> error = pass->run();
    if (error && pass->leaveOutDoctype(bytes, file, *error)) {
        pass.reset();  // one parser's memory at a time
        return ExpatPass(bytes, delegate, _blockSize, _limits).run();
    }
    return error;
}
