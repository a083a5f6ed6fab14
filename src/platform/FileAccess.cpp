#include "platform/FileAccess.h"

#ifdef Q_OS_MACOS
#include <CoreFoundation/CoreFoundation.h>
#endif

namespace ambulet {

FileAccess::FileAccess([[maybe_unused]] const FileURL& file) {
#ifdef Q_OS_MACOS
    // The deleter keeps the URL, because the right must be released on the same URL object.
    const auto url = static_cast<CFURLRef>(file.system.get());
    if (url != nullptr && CFURLStartAccessingSecurityScopedResource(url)) {
        _granted = std::shared_ptr<const void>(url, [keeper = file.system](CFURLRef granted) {
            CFURLStopAccessingSecurityScopedResource(granted);
        });
    }
#endif
}

}  // namespace ambulet
