#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace ambulet {

/// An open regular file, read at any place. Owns the file's descriptor. Any number of threads may
/// read at once.
class InputFile {
  public:
    /// None, with the reason in `error`, where there is no file, it may not be read, or it is
    /// something else: a folder (std::errc::is_a_directory), a pipe, a socket, a device
    /// (std::errc::not_supported). Never waits for the other end of a pipe.
    static std::optional<InputFile> open(const std::filesystem::path& path, std::error_code& error);

    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;
    ~InputFile();

    /// In bytes, at this moment; 0 where the system does not tell.
    std::uint64_t size() const;

    /// Reads up to `buffer.size()` bytes from byte `offset` on and returns how many; 0 at the end
    /// of the file, and, with the reason in `error`, where reading failed.
    std::size_t read(std::uint64_t offset, std::span<char> buffer, std::error_code& error) const;

  private:
    explicit InputFile(int descriptor) : _descriptor(descriptor) {}

    int _descriptor = -1;
};

}  // namespace ambulet
