#include "platform/FileSearch.h"

#include <deque>
#include <filesystem>
#include <set>
#include <system_error>

namespace ambulet {

std::optional<std::string> findFile(const FileIdentity& identity,
                                    const std::vector<std::string>& folders, std::uint64_t device,
                                    const SearchBounds& bounds) {
    namespace fs = std::filesystem;
    const auto end = std::chrono::steady_clock::now() + bounds.time;
    int entries = 0;
    std::deque<std::string> waiting(folders.begin(), folders.end());
    std::set<std::string> seen;
    for (; !waiting.empty(); waiting.pop_front()) {
        const std::string& folder = waiting.front();
        if (!seen.insert(folder).second || FileIdentity::deviceOfFolder(folder) != device) {
            continue;
        }
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (++entries > bounds.entries || std::chrono::steady_clock::now() > end) {
                return std::nullopt;
            }
            std::error_code ignored;
            const fs::file_type type = entry->symlink_status(ignored).type();
            if (type == fs::file_type::regular) {
                const auto found = FileIdentity::ofFile(entry->path());
                if (found && found->isSameFileAs(identity)) {
                    return entry->path();
                }
            } else if (type == fs::file_type::directory &&
                       !entry->path().filename().string().starts_with('.')) {
                waiting.push_back(entry->path());
            }
        }
    }
    return std::nullopt;
}

}  // namespace ambulet
