#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace makeexport {

/// A file to write, or standard output. Every operation says why it failed, if it did.
class File {
  public:
    /// Makes the file anew; "-" is standard output.
    std::error_code open(const std::string& path);

    std::error_code write(std::string_view text);

    /// Only after this is what was written known to be in the file.
    std::error_code close();

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Closer> _file;
};

}  // namespace makeexport
