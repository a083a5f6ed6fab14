#pragma once

#include "platform/FileURL.h"

#include <memory>

namespace ambulet {

/// The right to read a file that lies outside the application's sandbox. It is asked for when the
/// object is made and, if it was granted, given back exactly once: when the last copy is destroyed,
/// on whatever thread that is. A right that was refused is not given back, and not reported: the
/// file is tried all the same. Without a sandbox, as on Linux, there is nothing to ask for.
class FileAccess {
  public:
    explicit FileAccess(const FileURL& file);

  private:
    std::shared_ptr<const void> _granted;
};

}  // namespace ambulet
