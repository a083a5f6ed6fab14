#include "import/fast/FastBlocks.h"

#include "import/fast/FastBytes.h"

#include <algorithm>
#include <span>
#include <system_error>

namespace ambulet {

namespace {

/// Bytes that may wait for the next block to be understood.
constexpr std::size_t mostLeft = std::size_t{256} * 1024;

}  // namespace

FastBlocks::FastBlocks(const InputFile& file, std::size_t blockSize)
    : _file(file), _blockSize(blockSize),
      _bytes(std::make_unique_for_overwrite<char[]>(mostLeft + blockSize + FastBytes::padding)) {}

std::uint64_t FastBlocks::read(FastScanner& scanner, std::uint64_t position, std::uint64_t stop) {
    std::size_t left = 0;  // the bytes from `position` on, at the beginning of the buffer
    while (position < stop && left <= mostLeft) {
        // An error is found again by the reader that goes on from here, which says so.
        std::error_code metAgain;
        const std::size_t count =
            _file.read(position + left, std::span(_bytes.get() + left, _blockSize), metAgain);
        if (count == 0) {
            break;
        }
        left += count;
        char* const end = _bytes.get() + left;
        std::fill_n(end, FastBytes::padding, '\0');
        const char* const stopInBytes =
            _bytes.get() + std::min<std::uint64_t>(stop - position, left);
        const char* const reached = scanner.scan(_bytes.get(), stopInBytes);
        position += static_cast<std::uint64_t>(reached - _bytes.get());
        left = static_cast<std::size_t>(end - reached);
        if (reached != _bytes.get()) {
            std::copy(reached, static_cast<const char*>(end), _bytes.get());
        }
    }
    return position;
}

}  // namespace ambulet
