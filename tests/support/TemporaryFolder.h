#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ambulet {

/// A new, empty folder. The destructor removes it with its contents.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "ambulet-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        _path = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }

    /// Writes a file into the folder and returns its path.
    std::filesystem::path write(std::string_view name, std::string_view content) const {
        std::filesystem::path file = _path / name;
        std::ofstream stream(file, std::ios::binary);
        stream.write(content.data(), static_cast<std::streamsize>(content.size()));
        if (!stream.flush()) {
            throw std::runtime_error("cannot write " + file.string());
        }
        return file;
    }

  private:
    std::filesystem::path _path;
};

}  // namespace ambulet
