#include "platform/FileAccess.h"

#ifdef Q_OS_MACOS
#include <CoreFoundation/CoreFoundation.h>
#endif

namespace ambulet {

FileAccess::FileAccess([[maybe_unused]] const FileURL& file) {
#ifdef Q_OS_MACOS
    // The keeper keeps the URL as well: the right is given back on the very URL it was granted on.
    const auto url = static_cast<CFURLRef>(file.system.get());
    if (url != nullptr && CFURLStartAccessingSecurityScopedResource(url)) {
        _granted = std::shared_ptr<const void>(url, [keeper = file.system](CFURLRef granted) {
            CFURLStopAccessingSecurityScopedResource(granted);
        });
    }
#endif
}

}  // namespace ambulet
