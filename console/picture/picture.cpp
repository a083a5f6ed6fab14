// picture FILE [PROGRAM [ARGUMENT]...]
//
// Saves a picture of the screen as FILE. If PROGRAM is given, `picture`
// 1. starts PROGRAM,
// 2. waits until PROGRAM has drawn something and the screen has not changed for 1.5 seconds,
// 3. ends PROGRAM, and saves the last picture from before this end.
//
// The exit status is 1 if PROGRAM cannot be started or ends by itself, or if FILE cannot be
// written. It is also 1 if, after a minute, PROGRAM has drawn nothing or the screen still changes;
// the last picture is saved even then.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QThread>

#include <cstdio>

namespace {

constexpr int stillMs = 1500;
constexpr int patienceMs = 60000;
constexpr int intervalMs = 100;

QImage screen() {
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

}  // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: picture FILE [PROGRAM [ARGUMENT]...]\n", stderr);
        return 2;
    }

    const QImage before = screen();
    if (arguments.size() == 2) {
        return before.save(arguments[1]) ? 0 : 1;
    }
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(arguments[2], arguments.mid(3));
    if (!program.waitForStarted()) {
        std::fprintf(stderr, "picture: cannot start %s\n", qPrintable(arguments[2]));
        return 1;
    }

    QImage last = before;
    QElapsedTimer patience;
    QElapsedTimer still;
    patience.start();
    still.start();
    while (last == before || still.elapsed() < stillMs) {
        if (program.waitForFinished(intervalMs)) {
            std::fputs("picture: the program ended by itself\n", stderr);
            return 1;
        }
        if (patience.elapsed() > patienceMs) {
            std::fputs(last == before ? "picture: the program has drawn nothing\n"
                                      : "picture: the screen keeps changing\n",
                       stderr);
            break;
        }
        const QImage now = screen();
        if (now != last) {
            last = now;
            still.restart();
        }
    }
    program.terminate();
    program.waitForFinished();
    const bool rested = patience.elapsed() <= patienceMs;
    return last.save(arguments[1]) && rested ? 0 : 1;
}
