#pragma once

#include <QList>

class QWidget;

namespace ambulet {

/// The program's windows: main, Getting Started and About window, without dialogs and menus. Main
/// thread only.
namespace ProgramWindows {

/// The open windows, sorted by title. Minimised windows count as open.
QList<QWidget*> open();

/// The window with the keyboard focus; null if another program or a dialog has the focus.
QWidget* front();

/// Minimises every open window, even one without a minimise button.
void hideAll();

/// Restores the windows that `hideAll` minimised and that have been minimised ever since. The
/// window in front stays in front.
void showAll();

/// Raises every open window that is not minimised above other programs' windows. The window in
/// front stays in front.
void bringAllToFront();

}  // namespace ProgramWindows

}  // namespace ambulet
