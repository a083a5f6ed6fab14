// Never called: on macOS, Qt provides Hide Others and Show All.

#include "app/OtherApplications.h"

namespace ambulet {

bool OtherApplications::canHide() {
    return false;
}

void OtherApplications::hide() {}

void OtherApplications::show() {}

}  // namespace ambulet
