#include "import/xml/InputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ambulet {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code kindError(int descriptor) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        return lastError();
    }
    if (S_ISDIR(status.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    return S_ISREG(status.st_mode) ? std::error_code()
                                   : std::make_error_code(std::errc::not_supported);
}

}  // namespace

std::optional<InputFile> InputFile::open(const std::filesystem::path& path,
                                         std::error_code& error) {
    // Without O_NONBLOCK, opening a pipe would wait for a writer. Regular files ignore the flag.
    InputFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    error = file._descriptor < 0 ? lastError() : kindError(file._descriptor);
    return error ? std::nullopt : std::optional(std::move(file));
}

InputFile::InputFile(InputFile&& other) noexcept
    : _descriptor(std::exchange(other._descriptor, -1)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
    std::swap(_descriptor, other._descriptor);
    return *this;
}

InputFile::~InputFile() {
    if (_descriptor >= 0) {
        ::close(_descriptor);
    }
}

std::uint64_t InputFile::size() const {
    struct stat status = {};
    return fstat(_descriptor, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::size_t InputFile::read(std::uint64_t offset, std::span<char> buffer,
                            std::error_code& error) const {
    ssize_t count = 0;
    do {
        count = ::pread(_descriptor, buffer.data(), buffer.size(), static_cast<off_t>(offset));
    } while (count < 0 && errno == EINTR);
    error = count < 0 ? lastError() : std::error_code();
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

}  // namespace ambulet
