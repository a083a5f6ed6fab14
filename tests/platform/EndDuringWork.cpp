// A program that ends while work is running in the background. Its argument is the name of a test.
// It exits with 0 if the test passes, and hangs or fails otherwise.

#include "platform/BackgroundTask.h"

#include <QCoreApplication>
#include <QTimer>

#include <future>
#include <latch>
#include <memory>
#include <string_view>

namespace ambulet {

namespace {

// Sets a promise when it is destroyed.
struct Token {
    std::promise<void> destroyed;
    ~Token() { destroyed.set_value(); }
};

int theApplicationEndsWithoutWaitingForWork(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QObject receiver;
    // The latches are never destroyed, because the work is still running when main returns.
    auto* const started = new std::latch(1);
    auto* const never = new std::latch(1);
    runInBackground(
        [started, never] {
            started->count_down();
            never->wait();
            return 0;
        },
        &receiver, [](int) {});
    started->wait();
    QTimer::singleShot(0, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

int aCompletionAfterTheApplicationsEndIsDropped(int argc, char** argv) {
    QObject receiver;
    std::latch ended(1);
    bool completed = false;
    auto token = std::make_unique<Token>();
    std::future<void> dropped = token->destroyed.get_future();
    {
        const QCoreApplication application(argc, argv);
        runInBackground(
            [&ended] {
                ended.wait();
                return 0;
            },
            &receiver, [&completed, token = std::move(token)](int) { completed = true; });
    }
    ended.count_down();
    dropped.wait();
    return completed ? 1 : 0;
}

}  // namespace

}  // namespace ambulet

using namespace ambulet;

int main(int argc, char** argv) {
    const std::string_view name = argc > 1 ? argv[1] : "";
    if (name == "theApplicationEndsWithoutWaitingForWork") {
        return theApplicationEndsWithoutWaitingForWork(argc, argv);
    }
    if (name == "aCompletionAfterTheApplicationsEndIsDropped") {
        return aCompletionAfterTheApplicationsEndIsDropped(argc, argv);
    }
    return 2;
}
