#include "import/xml/InputBuffer.h"

#include "import/xml/InputFile.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <span>
#include <system_error>

namespace ambulet {

namespace {

constexpr std::size_t page = 4096;

std::size_t wholePages(std::size_t size) {
    return (size + page - 1) / page * page;
}

}  // namespace

InputBuffer::InputBuffer(std::size_t before, std::size_t size, std::size_t padding)
    : _bytes(static_cast<char*>(
          std::aligned_alloc(page, wholePages(before) + wholePages(size + padding)))),
      _begin(_bytes.get() + wholePages(before)), _padding(padding) {
    if (_bytes == nullptr) {
        throw std::bad_alloc();
    }
}

std::size_t InputBuffer::read(const InputFile& file, std::uint64_t offset, std::size_t size) const {
    std::size_t filled = 0;
    std::error_code endsTheFile;
    while (const std::size_t count =
               file.read(offset + filled, std::span(_begin + filled, size - filled), endsTheFile)) {
        filled += count;
    }
    std::fill_n(_begin + filled, _padding, '\0');
    return filled;
}

void InputBuffer::Free::operator()(char* bytes) const {
    std::free(bytes);
}

}  // namespace ambulet
