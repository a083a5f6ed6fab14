// fuzz_bookmarks: damaged bookmarks from the settings must resolve to their file, to another file
// at its path, or to nothing. The input is the length of a file name, the name, the version of a
// bookmark, and the rest of the bookmark. The bookmark's path is that name in a temporary folder,
// so that only temporary folders are searched.

#include "Rule.h"
#include "platform/FileBookmark.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <QDataStream>
#include <QIODevice>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

using namespace ambulet;
namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

class Files {
  public:
    Files() {
        fs::create_directories(inner() / "a" / "b");
        for (const char* name : {"old.xml", "inner/export.xml", "inner/a/b/moved.xml"}) {
            _folder.write(name, "<HealthData/>");
        }
        _folder.write("inner/longer.xml", "<HealthData></HealthData>");
    }

    /// Its parent folder is searched, so it is a temporary folder, too.
    fs::path inner() const { return _folder.path() / "inner"; }

    bool contains(const fs::path& path) const {
        return path.lexically_normal().string().starts_with(_folder.path().string() + '/');
    }

  private:
    TemporaryFolder _folder;
    ScopedVariable _home{"HOME", _folder.path().string()};
};

void checkUnpacked(const QByteArray& data) {
    // A valid bookmark is not resolved, because its path may be anywhere.
    require(FileBookmark::isBookmark(data) == FileBookmark::isBookmark(data),
            "isBookmark gives the same result again");
    if (!FileBookmark::isBookmark(data)) {
        require(!FileBookmark::resolve(data), "invalid data resolves to nothing");
    } else {
        require(!FileBookmark::isBookmark(data.chopped(1)), "a truncated bookmark is invalid");
        require(!FileBookmark::isBookmark(data + '\0'), "a bookmark with more data is invalid");
    }
}

QByteArray record(const fs::path& path, quint8 version, QByteArrayView rest) {
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << quint32{0x416d6246} << version << QByteArray::fromStdString(path.string());
    return data + rest.toByteArray();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Files files;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkUnpacked(bytes);
    if (bytes.size() < 2) {
        return 0;
    }
    const auto length = std::min<qsizetype>(static_cast<quint8>(bytes[0]), bytes.size() - 2);
    const fs::path path = files.inner() / bytes.sliced(1, length).toStdString();
    const auto version = static_cast<quint8>(bytes[length + 1] % 4);
    if (!files.contains(path) || !files.contains(path.parent_path())) {
        return 0;
    }
    const QByteArray bookmark = record(path, version, bytes.sliced(length + 2));
    checkUnpacked(bookmark);
    const auto resolved = FileBookmark::resolve(bookmark);
    if (!resolved) {
        std::error_code error;
        require(!FileBookmark::isBookmark(bookmark) || !fs::is_regular_file(path, error),
                "a file at the path is found");
        return 0;
    }
    const fs::path found = resolved->file.path;
    require(files.contains(found) && fs::is_regular_file(found),
            "the result is a file in the folder");
    require(resolved->stale || found == path, "a result that is not stale is at its path");
    const auto fresh = FileBookmark::make(resolved->file);
    require(fresh.has_value(), "a bookmark can be made of the result");
    const auto again = FileBookmark::resolve(*fresh);
    require(again && !again->stale && again->file.path == found, "it resolves to that file");
    return 0;
}
