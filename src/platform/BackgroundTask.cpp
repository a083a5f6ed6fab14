// A work's thread is detached: to wait for it, in whatever destructor, would be to wait for a load.
// So it may outlive both the receiver of its completion and the application object, and may post
// only while neither can be destroyed. That is what the gate is for: who posts holds it, and who is
// destroyed closes it first.

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

// Never destroyed: works may still end while the process does.
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
                // Meant: the result stays what it was, and that is what the completion gets.
            }
            work = nullptr;
            post(address, std::move(completion));
        }).detach();
    } catch (const std::system_error&) {
        // There was no thread to be had: as if the work had thrown at once.
        post(address, std::move(completion));
    }
}

}  // namespace background

}  // namespace ambulet
