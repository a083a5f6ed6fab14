#include "makeexport/Output.h"

#include <utility>

namespace makeexport {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

}  // namespace

Output::Output(Sink sink) : _sink(std::move(sink)) {
    _block.reserve(blockSize);
}

void Output::write(std::string_view text) {
    if (_block.size() + text.size() > blockSize) {
        handOn();
    }
    _block += text;
    _size += text.size();
}

void Output::finish() {
    handOn();
}

void Output::handOn() {
    if (!_error && !_block.empty()) {
        _error = _sink(_block);
    }
    _block.clear();
}

}  // namespace makeexport
