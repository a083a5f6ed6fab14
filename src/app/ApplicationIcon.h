#pragma once

#include <QIcon>

namespace ambulet {

class Bundle;

/// The application's icon in all the sizes that the bundle has; null where it has none.
QIcon applicationIcon(const Bundle& bundle);

}  // namespace ambulet
