#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace ambulet {

/// An open regular file that can be read at any offset. Owns the file descriptor. Any number of
/// threads may read at the same time.
class InputFile {
  public:
    /// Opens a file. If that fails, the result is empty and `error` says why: for example
    /// std::errc::is_a_directory for a folder, and std::errc::not_supported for a pipe or a device.
    /// Does not block on pipes.
    static std::optional<InputFile> open(const std::filesystem::path& path, std::error_code& error);

    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;
    ~InputFile();

    /// The current size in bytes; 0 if it is unknown.
    std::uint64_t size() const;

    /// Reads up to `buffer.size()` bytes, starting at `offset`, and returns their number, which is
    /// 0 at the end of the file. If reading fails, the result is 0 and `error` says why.
    std::size_t read(std::uint64_t offset, std::span<char> buffer, std::error_code& error) const;

  private:
    explicit InputFile(int descriptor) : _descriptor(descriptor) {}

    int _descriptor = -1;
};

}  // namespace ambulet
