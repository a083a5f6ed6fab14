// Never asked here: the toolkit itself puts Hide Others and Show All into the application menu.

#include "app/OtherApplications.h"

namespace ambulet {

bool OtherApplications::canHide() {
    return false;
}

void OtherApplications::hide() {}

void OtherApplications::show() {}

}  // namespace ambulet
