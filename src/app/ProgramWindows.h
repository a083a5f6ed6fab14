#pragma once

#include <QList>

class QWidget;

namespace ambulet {

/// The program's windows, of whichever controllers: dialogs, menus and the like are none. Main
/// thread only.
namespace ProgramWindows {

/// The open windows, by title. A minimised one is open.
QList<QWidget*> open();

/// The one that has the keyboard; null where another program or a dialog has it.
QWidget* front();

/// Minimises every open window, also one that has no button for it.
void hideAll();

/// Restores every minimised window; the one in front stays there.
void showAll();

/// Raises every open window that is not minimised above other programs' windows; the one in front
/// stays there.
void bringAllToFront();

}  // namespace ProgramWindows

}  // namespace ambulet
