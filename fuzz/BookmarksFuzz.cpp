// fuzz_bookmarks: a damaged bookmark must resolve to its file, to another file at its path, or to
// nothing. The input is used twice. First it is the whole bookmark. Then it consists of the length
// of a path, the path, a byte with the version of a bookmark and two options, and the bytes of the
// identity. The path is relative to a temporary folder, so that only temporary folders are
// searched.

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

// The size of the identity in a bookmark of this version.
qsizetype identitySize(quint8 version) {
    return version == 1 ? 29 : 37;
}

class Files {
  public:
    Files() {
        fs::create_directories(inner() / "a" / "b");
        for (const char* name : {"old.xml", "inner/export.xml", "inner/a/b/moved.xml"}) {
            _folder.write(name, "<HealthData/>");
        }
        _folder.write("inner/longer.xml", "<HealthData></HealthData>");
    }

    /// The folder to which paths are relative. Its parent, which is searched, is temporary, too.
    fs::path inner() const { return _folder.path() / "inner"; }

    QByteArray identityOfMoved() const {
        const auto bookmark = FileBookmark::make(FileURL(inner() / "a" / "b" / "moved.xml"));
        return bookmark->last(identitySize(2));
    }

    bool contains(const fs::path& path) const {
        return path.lexically_normal().string().starts_with(_folder.path().string() + '/');
    }

  private:
    TemporaryFolder _folder;
    ScopedVariable _home{"HOME", _folder.path().string()};
};

void checkUnpacked(const QByteArray& data) {
    // A valid bookmark is not resolved here, because its path may be anywhere.
    require(FileBookmark::isBookmark(data) == FileBookmark::isBookmark(data),
            "isBookmark gives the same result again");
    if (!FileBookmark::isBookmark(data)) {
        require(!FileBookmark::resolve(data), "invalid data resolves to nothing");
    } else {
        require(!FileBookmark::isBookmark(data.chopped(1)), "a truncated bookmark is invalid");
        require(!FileBookmark::isBookmark(data + '\0'), "a bookmark with more data is invalid");
    }
}

// Without this option, the bytes of the identity are cut or padded to the size that the version
// demands, because otherwise hardly any input would be a bookmark.
constexpr int anySize = 4;

// With this option, the bytes of the identity are combined by XOR with the identity of the file
// "moved.xml". That identity differs in each run, so no input can contain it.
constexpr int nearMoved = 8;

QByteArray identityFrom(const Files& files, QByteArray bytes, quint8 version, int options) {
    if ((options & anySize) == 0) {
        bytes = bytes.leftJustified(identitySize(version), '\0', true);
    }
    if ((options & nearMoved) != 0) {
        const QByteArray moved = files.identityOfMoved();
        for (qsizetype i = 0; i < std::min(bytes.size(), moved.size()); ++i) {
            bytes[i] = static_cast<char>(bytes[i] ^ moved[i]);
        }
    }
    return bytes;
}

// A search ends after two seconds, so it may fail when the machine is busy.
bool isFoundLater(const QByteArray& bookmark) {
    for (int tries = 0; tries < 10; ++tries) {
        if (FileBookmark::resolve(bookmark)) {
            return true;
        }
    }
    return false;
}

QByteArray record(const fs::path& path, quint8 version, const QByteArray& identity) {
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << quint32{0x416d6246} << version << QByteArray::fromStdString(path.string());
    return data + identity;
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
    const QByteArray rest = bytes.sliced(length + 2);
    const QByteArray identity = identityFrom(files, rest, version, bytes[length + 1]);
    const QByteArray bookmark = record(path, version, identity);
    checkUnpacked(bookmark);
    const auto resolved = FileBookmark::resolve(bookmark);
    if (!resolved) {
        if (FileBookmark::isBookmark(bookmark)) {
            std::error_code error;
            require(!fs::is_regular_file(path, error), "a file at the path is found");
            require(path.filename() != "moved.xml" || identity != files.identityOfMoved() ||
                        isFoundLater(bookmark),
                    "a file that was moved is found");
        }
        return 0;
    }
    const fs::path found = resolved->file.path;
    require(files.contains(found) && fs::is_regular_file(found),
            "the result is a file in the temporary folder");
    require(found.native().find('\0') == std::string::npos, "no path contains a NUL");
    require(resolved->stale || found == path, "a result that is not stale is the bookmark's path");
    const auto fresh = FileBookmark::make(resolved->file);
    require(fresh.has_value(), "a bookmark can be made of the result");
    const auto again = FileBookmark::resolve(*fresh);
    require(again && !again->stale && again->file.path == found, "that bookmark resolves to it");
    return 0;
}
