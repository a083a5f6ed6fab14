#pragma once

#include "platform/FileURL.h"

#include <memory>

namespace ambulet {

/// The right to read a file outside the application's sandbox on macOS. The constructor requests
/// the right. If it is granted, the destructor of the last copy releases it, on any thread. A
/// refusal is not reported; the caller tries to read the file in any case. On Linux the class does
/// nothing.
class FileAccess {
  public:
    explicit FileAccess(const FileURL& file);

  private:
    std::shared_ptr<const void> _granted;
};

}  // namespace ambulet
