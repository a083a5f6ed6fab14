// On macOS, Qt provides Hide Others and Show All, so `canHide`, `hide` and `show` are never called.
// `haveWindowAt` is called, and finds no window.

#include "app/OtherApplications.h"

namespace ambulet {

class OtherApplications::HiddenWindows {};

OtherApplications::OtherApplications() = default;

OtherApplications::~OtherApplications() = default;

bool OtherApplications::canHide() {
    return false;
}

void OtherApplications::hide() {}

void OtherApplications::show() {}

bool OtherApplications::haveWindowAt(QPoint /*place*/) {
    return false;
}

}  // namespace ambulet
