// The threads are detached, because no destructor may wait for a thread. So a thread may outlive
// the receiver and the application object, but must not post once either is gone. Threads post with
// the gate's mutex locked. With the same mutex locked, each of the two destructors records that its
// object is gone.

#include "platform/BackgroundTask.h"

#include <QCoreApplication>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace ambulet {

namespace background {
namespace {

// Closed while there is no application object to post to.
struct Gate {
    std::mutex mutex;
    bool open = false;
};

// The gate is never destroyed, because a thread may use it while the process ends.
Gate& gate() {
    static auto* const theGate = new Gate;
    return *theGate;
}

// Called by the application object's destructor before it destroys the event dispatcher.
void closeGate() {
    const std::lock_guard lock(gate().mutex);
    gate().open = false;
}

void openGate() {
    if (QCoreApplication::instance() == nullptr) {
        return;
    }
    const std::lock_guard lock(gate().mutex);
    if (!std::exchange(gate().open, true)) {
        qAddPostRoutine(closeGate);
    }
}

// The receiver of one completion; null once the receiver is destroyed. Guarded by the gate's mutex.
struct Address {
    QObject* receiver;
};

void post(const std::shared_ptr<Address>& address, std::function<void()> completion) {
    const std::lock_guard lock(gate().mutex);
    if (address->receiver != nullptr && gate().open) {
        QMetaObject::invokeMethod(address->receiver, std::move(completion), Qt::QueuedConnection);
    }
}

}  // namespace

void run(std::function<void()> work, QObject* receiver, std::function<void()> completion) {
    openGate();
    auto address = std::make_shared<Address>(Address{receiver});
    const auto watch = QObject::connect(receiver, &QObject::destroyed, [address] {
        const std::lock_guard lock(gate().mutex);
        address->receiver = nullptr;
    });
    completion = [watch, completion = std::move(completion)] {
        QObject::disconnect(watch);
        completion();
    };
    try {
        std::thread([work = std::move(work), address, completion]() mutable {
            try {
                work();
            } catch (...) {
                // Deliberate: the completion gets the default result.
            }
            work = nullptr;
            post(address, std::move(completion));
        }).detach();
    } catch (const std::system_error&) {
        // No thread could be started. The completion gets the default result.
        post(address, std::move(completion));
    }
}

}  // namespace background

}  // namespace ambulet
