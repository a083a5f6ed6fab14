#pragma once

#include <QObject>

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace ambulet {

namespace background {

/// Like `runInBackground`, but `work` itself passes its result to the completion.
void run(std::function<void()> work, QObject* receiver, std::function<void()> completion);

}  // namespace background

/// Runs `work()` on a new thread, and then `completion(result)` in the event loop of the receiver's
/// thread. Returns at once. Call this on the receiver's thread.
///
/// - Calls do not wait for each other, so their completions may run in any order.
/// - If the receiver or the application object is destroyed before the completion runs, the
///   completion is dropped. Neither destructor waits for the work.
/// - If the work throws, or no thread can be started, the completion runs with a default result.
/// - `work` is destroyed before the completion is posted, on the thread that ran it. A dropped
///   completion may be destroyed on that thread, too.
/// - The end of the process ends the work. So the work must not use anything that is destroyed
///   after `main`, or `main` must end with `std::_Exit`.
template <std::invocable Work, std::invocable<std::invoke_result_t<Work&>> Completion>
requires std::default_initializable<std::invoke_result_t<Work&>>
void runInBackground(Work work, QObject* receiver, Completion completion) {
    // Shared, because a std::function copies what it holds; `work` and `completion` may not be
    // copyable.
    auto sharedWork = std::make_shared<Work>(std::move(work));
    auto sharedCompletion = std::make_shared<Completion>(std::move(completion));
    auto result = std::make_shared<std::invoke_result_t<Work&>>();
    background::run([sharedWork = std::move(sharedWork), result] { *result = (*sharedWork)(); },
                    receiver,
                    [sharedCompletion = std::move(sharedCompletion), result] {
                        (*sharedCompletion)(std::move(*result));
                    });
}

}  // namespace ambulet
