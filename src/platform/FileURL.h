#pragma once

#include <QString>

#include <memory>

namespace ambulet {

/// A file, by its place. `FileURL{path}` is all there is to it, except on macOS for a file that a
/// bookmark led to: there the system's own URL bears the right to open the file, and travels along.
/// A plain value; its copies may be used on any thread.
struct FileURL {
    QString path;  ///< absolute
    std::shared_ptr<const void> system =
        nullptr;  ///< macOS, from a bookmark: the CFURL; elsewhere null
};

}  // namespace ambulet
