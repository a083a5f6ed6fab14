#pragma once

#include <QIcon>

namespace ambulet {

class Bundle;

/// The application's icon in all sizes found in the bundle; null if there are none.
QIcon applicationIcon(const Bundle& bundle);

}  // namespace ambulet
