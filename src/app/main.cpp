#include "app/AppDelegate.h"
#include "app/ApplicationIcon.h"
#include "app/ApplicationName.h"
#include "app/TerminationSignals.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"

#include <QApplication>
#include <QTimer>

#include <cstdlib>

using namespace ambulet;

int main(int argc, char** argv) {
    // Qt's file dialog uses regular expressions. Compiling them to machine code would need memory
    // that is writable and executable.
    qputenv("QT_ENABLE_REGEXP_JIT", "0");
    int status = 0;
    {
        nameAccessibleApplication();
        const QApplication application(argc, argv);
        QApplication::setDesktopFileName(Bundle::main().identifier().value_or(QString()));
        quitOnTerminationSignals();
        AppDelegate delegate(UserDefaults::standard(), Bundle::main());
        QTimer::singleShot(0, &delegate, [&delegate] {
#ifndef Q_OS_MACOS  // it would replace the bundle's icon in the Dock
            setApplicationIcon(Bundle::main());
#endif
            delegate.applicationDidFinishLaunching();
        });
        status = QApplication::exec();
    }
    // Not `return status`: a file may still be read on another thread. Static destructors would
    // destroy objects that the thread uses, or wait for the thread.
    std::_Exit(status);
}
