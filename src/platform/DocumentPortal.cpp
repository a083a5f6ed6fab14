#include "platform/DocumentPortal.h"

#ifdef __linux__
#include <array>
#include <climits>
#include <sys/xattr.h>
#endif

namespace ambulet {

std::optional<std::string> hostPathOfFile([[maybe_unused]] const std::string& path) {
#ifdef __linux__
    std::array<char, PATH_MAX> value{};
    const ssize_t size =
        ::getxattr(path.c_str(), "user.document-portal.host-path", value.data(), value.size());
    if (size > 0 && value.front() == '/') {
        const std::string host(value.data(), static_cast<std::size_t>(size));
        return host.substr(0, host.find('\0'));  // some portals end the value with a NUL
    }
#endif
    return std::nullopt;
}

}  // namespace ambulet
