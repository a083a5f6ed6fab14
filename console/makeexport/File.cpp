#include "makeexport/File.h"

#include <cerrno>

namespace makeexport {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

}  // namespace

std::error_code File::open(const std::string& path) {
    _file.reset(path == "-" ? stdout : std::fopen(path.c_str(), "wb"));
    return _file ? std::error_code() : lastError();
}

std::error_code File::write(std::string_view text) {
    const bool all = std::fwrite(text.data(), 1, text.size(), _file.get()) == text.size();
    return all ? std::error_code() : lastError();
}

std::error_code File::close() {
    return std::fclose(_file.release()) == 0 ? std::error_code() : lastError();
}

}  // namespace makeexport
