#include "import/expat/ExpatReader.h"

#include "import/expat/ExpatPass.h"
#include "import/xml/InputFile.h"
#include "import/xml/PatchedFile.h"

#include <memory>

namespace ambulet {

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    PatchedFile bytes(file);
    auto pass = std::make_unique<ExpatPass>(bytes, delegate, _blockSize, _limits);
    std::optional<XMLError> error = pass->run();
    if (error && pass->leaveOutDoctype(bytes, file, *error)) {
        pass.reset();  // one parser's memory at a time
        return ExpatPass(bytes, delegate, _blockSize, _limits).run();
    }
    return error;
}

}  // namespace ambulet
