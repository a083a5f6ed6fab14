#include "platform/FileSearch.h"

#include <QFile>

#include <deque>
#include <filesystem>
#include <set>
#include <system_error>

namespace ambulet {

std::optional<QString> findFile(const FileIdentity& identity, const QStringList& folders,
                                std::uint64_t device, const SearchBounds& bounds) {
    namespace fs = std::filesystem;
    const auto end = std::chrono::steady_clock::now() + bounds.time;
    int entries = 0;
    std::deque<QString> waiting(folders.begin(), folders.end());
    std::set<QString> seen;
    for (; !waiting.empty(); waiting.pop_front()) {
        const QString& folder = waiting.front();
        if (!seen.insert(folder).second || FileIdentity::deviceOfFolder(folder) != device) {
            continue;
        }
        std::error_code error;
        fs::directory_iterator entry(QFile::encodeName(folder).toStdString(), error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (++entries > bounds.entries || std::chrono::steady_clock::now() > end) {
                return std::nullopt;
            }
            std::error_code ignored;
            const fs::file_type type = entry->symlink_status(ignored).type();
            const QString path = QFile::decodeName(entry->path().c_str());
            if (type == fs::file_type::regular) {
                const auto found = FileIdentity::ofFile(path);
                if (found && found->isSameFileAs(identity)) {
                    return path;
                }
            } else if (type == fs::file_type::directory &&
                       !entry->path().filename().string().starts_with('.')) {
                waiting.push_back(path);
            }
        }
    }
    return std::nullopt;
}

}  // namespace ambulet
