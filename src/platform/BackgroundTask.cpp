// The thread of a work is detached, since no destructor may wait for a load. It may outlive the
// receiver and the application object, and must not post to either while it is being destroyed. The
// gate's mutex sees to that: whoever posts holds it, and destruction takes it first.

#include "platform/BackgroundTask.h"

#include <QCoreApplication>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace ambulet {

namespace background {
namespace {

struct Gate {
    std::mutex mutex;
    bool applicationClosing = true;
};

// Never destroyed, as a work may end while the process does.
Gate& gate() {
    static auto* const theGate = new Gate;
    return *theGate;
}

// Called by the application object's destructor before it takes the event dispatcher down.
void closeGate() {
    const std::lock_guard lock(gate().mutex);
    gate().applicationClosing = true;
}

void openGate() {
    if (QCoreApplication::instance() == nullptr) {
        return;
    }
    const std::lock_guard lock(gate().mutex);
    if (std::exchange(gate().applicationClosing, false)) {
        qAddPostRoutine(closeGate);
    }
}

// The receiver of one completion, null once it is destroyed. Guarded by the gate's mutex.
struct Address {
    QObject* receiver;
};

void post(const std::shared_ptr<Address>& address, std::function<void()> completion) {
    const std::lock_guard lock(gate().mutex);
    if (address->receiver != nullptr && !gate().applicationClosing) {
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
                // Deliberate: the completion gets the result as it was made.
            }
            work = nullptr;
            post(address, std::move(completion));
        }).detach();
    } catch (const std::system_error&) {
        // No thread could be started. The same as a work that throws.
        post(address, std::move(completion));
    }
}

}  // namespace background

}  // namespace ambulet
