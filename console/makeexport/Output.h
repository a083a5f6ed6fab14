#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace makeexport {

/// Collects text and hands it on in blocks, so that an output of any length needs no more memory
/// than a block. After the first failure nothing is handed on any more.
class Output {
  public:
    /// Takes a block, or says why it could not.
    using Sink = std::function<std::error_code(std::string_view block)>;

    explicit Output(Sink sink);

    void write(std::string_view text);

    /// Hands on what is left; no more is written afterwards.
    void finish();

    /// How many bytes were written, handed on or not.
    std::uint64_t size() const { return _size; }

    /// The first failure, if there was one.
    std::error_code error() const { return _error; }

  private:
    void handOn();

    Sink _sink;
    std::string _block;
    std::uint64_t _size = 0;
    std::error_code _error;
};

}  // namespace makeexport
