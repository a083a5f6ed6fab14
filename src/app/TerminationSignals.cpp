// A signal handler may do almost nothing, so it only writes the signal's number into a pipe. The
// event loop watches the pipe, and quits when there is something to read.

#include "app/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace ambulet {

namespace {

std::array<int, 2> pipeEnds{-1, -1};

extern "C" void passOn(int signal) {
    const auto byte = static_cast<char>(signal);
    // The handler has been removed (SA_RESETHAND), so raising the signal again ends the process.
    if (write(pipeEnds[1], &byte, 1) != 1) {
        std::raise(signal);
    }
}

void handle(int signal) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
        action = {};
        action.sa_handler = passOn;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

void quitOnTerminationSignals() {
    if (pipe(pipeEnds.data()) != 0) {
        return;  // the signals keep their default action: they end the process at once
    }
    for (const int end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    auto* const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        handle(signal);
    }
}

}  // namespace ambulet
