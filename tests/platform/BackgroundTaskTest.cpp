#include "platform/BackgroundTask.h"

#include "Unprivileged.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <gtest/gtest.h>

#include <future>
#include <latch>
#include <new>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace ambulet {

namespace {

// Sets a promise when it is destroyed.
struct Token {
    std::promise<void> destroyed;
    ~Token() { destroyed.set_value(); }
};

TEST(BackgroundTask, theWorkRunsOnAnotherThreadAndTheCompletionOnTheReceiversThread) {
    QObject receiver;
    QEventLoop loop;
    QThread* completionThread = nullptr;
    Qt::HANDLE workThread = nullptr;
    runInBackground([] { return QThread::currentThreadId(); }, &receiver,
                    [&](Qt::HANDLE thread) {
                        workThread = thread;
                        completionThread = QThread::currentThread();
                        loop.quit();
                    });
    loop.exec();
    EXPECT_EQ(completionThread, receiver.thread());
    EXPECT_NE(workThread, nullptr);
    EXPECT_NE(workThread, QThread::currentThreadId());
}

TEST(BackgroundTask, theCompletionRunsInTheEventLoopAndNotDuringTheCall) {
    QObject receiver;
    QEventLoop loop;
    bool returned = false;
    bool returnedBefore = false;
    runInBackground([] { return 0; }, &receiver,
                    [&](int) {
                        returnedBefore = returned;
                        loop.quit();
                    });
    returned = true;
    loop.exec();
    EXPECT_TRUE(returnedBefore);
}

TEST(BackgroundTask, aTaskCompletesWhileAnEarlierTaskIsStillRunning) {
    QObject receiver;
    QEventLoop loop;
    std::latch secondCompleted(1);
    std::vector<int> completed;
    runInBackground(
        [&] {
            secondCompleted.wait();
            return 1;
        },
        &receiver,
        [&](int result) {
            completed.push_back(result);
            loop.quit();
        });
    runInBackground([] { return 2; }, &receiver,
                    [&](int result) {
                        completed.push_back(result);
                        secondCompleted.count_down();
                    });
    loop.exec();
    EXPECT_EQ(completed, (std::vector{2, 1}));
}

TEST(BackgroundTask, eachOfManyTasksRunsOnItsOwnThread) {
    constexpr int tasks = 50;
    QObject receiver;
    QEventLoop loop;
    std::latch allStarted(tasks);
    int sum = 0;
    int left = tasks;
    for (int i = 0; i < tasks; ++i) {
        runInBackground(
            [&allStarted, i] {
                allStarted.arrive_and_wait();
                return i;
            },
            &receiver,
            [&](int result) {
                sum += result;
                if (--left == 0) {
                    loop.quit();
                }
            });
    }
    loop.exec();
    EXPECT_EQ(sum, 1225);  // 0 + 1 + ... + 49
}

TEST(BackgroundTask, theWorkTheCompletionAndTheResultNeedOnlyBeMovable) {
    QObject receiver;
    QEventLoop loop;
    std::string text;
    runInBackground(
        [given = std::make_unique<std::string>("a")]() mutable { return std::move(given); },
        &receiver,
        [&, other = std::make_unique<std::string>("b")](std::unique_ptr<std::string> result) {
            text = *result + *other;
            loop.quit();
        });
    loop.exec();
    EXPECT_EQ(text, "ab");
}

TEST(BackgroundTask, theWorkIsDestroyedBeforeTheCompletionIsPosted) {
    // The receiver no longer exists, so the completion is destroyed instead of being posted. The
    // test can see that.
    std::vector<std::string> destroyed;
    const auto witness = [&destroyed](std::promise<void>& seen, const char* name) {
        return std::shared_ptr<void>(nullptr, [&destroyed, &seen, name](void*) {
            destroyed.emplace_back(name);
            seen.set_value();
        });
    };
    std::promise<void> workDestroyed;
    std::promise<void> completionDestroyed;
    std::latch receiverDestroyed(1);
    auto receiver = std::make_unique<QObject>();
    runInBackground(
        [&receiverDestroyed, held = witness(workDestroyed, "work")] {
            receiverDestroyed.wait();
            return 0;
        },
        receiver.get(), [held = witness(completionDestroyed, "completion")](int) {});
    receiver.reset();
    receiverDestroyed.count_down();
    workDestroyed.get_future().wait();
    completionDestroyed.get_future().wait();
    EXPECT_EQ(destroyed, (std::vector<std::string>{"work", "completion"}));
}

TEST(BackgroundTask, theCompletionGetsADefaultResultIfTheWorkThrows) {
    QObject receiver;
    QEventLoop loop;
    std::vector<int> lengths;
    const auto completion = [&](const std::vector<int>& result) {
        lengths.push_back(static_cast<int>(result.size()));
        if (lengths.size() == 2) {
            loop.quit();
        }
    };
    runInBackground([]() -> std::vector<int> { throw std::bad_alloc(); }, &receiver, completion);
    runInBackground([]() -> std::vector<int> { throw 1; }, &receiver, completion);
    loop.exec();
    EXPECT_EQ(lengths, (std::vector{0, 0}));
}

TEST(BackgroundTask, theCompletionIsDroppedWhenTheReceiverIsDestroyedDuringTheWork) {
    auto receiver = std::make_unique<QObject>();
    std::latch receiverDestroyed(1);
    auto token = std::make_unique<Token>();
    std::future<void> dropped = token->destroyed.get_future();
    bool completed = false;
    runInBackground(
        [&] {
            receiverDestroyed.wait();
            return 0;
        },
        receiver.get(), [&completed, token = std::move(token)](int) { completed = true; });
    receiver.reset();
    receiverDestroyed.count_down();
    dropped.wait();
    QCoreApplication::processEvents();
    EXPECT_FALSE(completed);
}

TEST(BackgroundTask, aReceiverDestroyedWhileTheWorkEndsIsNeverAccessed) {
    for (int i = 0; i < 200; ++i) {
        auto receiver = std::make_unique<QObject>();
        auto token = std::make_unique<Token>();
        std::future<void> dropped = token->destroyed.get_future();
        std::latch together(2);
        runInBackground(
            [&together] {
                together.arrive_and_wait();
                return 0;
            },
            receiver.get(), [token = std::move(token)](int) {});
        together.arrive_and_wait();
        receiver.reset();
        dropped.wait();
    }
}

// Runs `body` in a process that cannot start threads, and returns whether it passes.
bool passesWithoutThreads(const std::function<void()>& body) {
    return passesUnprivileged([&body] {
        const rlimit none{0, 0};
        ASSERT_EQ(setrlimit(RLIMIT_NPROC, &none), 0);
        body();
    });
}

TEST(BackgroundTask, theCompletionGetsADefaultResultIfNoThreadCanBeStarted) {
    EXPECT_TRUE(passesWithoutThreads([] {
        QObject receiver;
        std::string text = "untouched";
        bool worked = false;
        runInBackground(
            [&worked] {
                worked = true;
                return std::string("result");
            },
            &receiver, [&text](const std::string& result) { text = result; });
        EXPECT_EQ(text, "untouched");
        QCoreApplication::processEvents();
        EXPECT_EQ(text, "");
        EXPECT_FALSE(worked);
    }));
}

TEST(BackgroundTask, aCompletedCallLeavesNoSignalConnection) {
    struct Receiver : QObject {
        using QObject::receivers;
    } receiver;
    QEventLoop loop;
    runInBackground([] { return 0; }, &receiver, [&](int) { loop.quit(); });
    EXPECT_EQ(receiver.receivers(SIGNAL(destroyed(QObject*))), 1);
    loop.exec();
    EXPECT_EQ(receiver.receivers(SIGNAL(destroyed(QObject*))), 0);
}

TEST(BackgroundTask, aPostedCompletionIsDroppedWhenTheReceiverIsDestroyed) {
    // If no thread can be started, the completion has been posted when the call returns.
    EXPECT_TRUE(passesWithoutThreads([] {
        auto receiver = std::make_unique<QObject>();
        bool completed = false;
        runInBackground([] { return 0; }, receiver.get(), [&](int) { completed = true; });
        receiver.reset();
        QCoreApplication::processEvents();
        EXPECT_FALSE(completed);
    }));
}

}  // namespace

}  // namespace ambulet
