#pragma once

#include "platform/FileURL.h"

#include <memory>

namespace ambulet {

/// The right to read a file outside the application's sandbox. The constructor asks for it. If it
/// was granted, the destructor of the last copy gives it back, on any thread. A refusal is not
/// reported; the caller tries to read the file in any case. Without a sandbox, as on Linux, the
/// class does nothing.
class FileAccess {
  public:
    explicit FileAccess(const FileURL& file);

  private:
    std::shared_ptr<const void> _granted;
};

}  // namespace ambulet
