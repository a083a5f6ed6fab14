#pragma once

#include <QObject>

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace ambulet {

namespace background {

/// As `runInBackground`, for a work that leaves its result, if it has one, where the completion
/// finds it.
void run(std::function<void()> work, QObject* receiver, std::function<void()> completion);

}  // namespace background

/// Runs `work()` on a thread of its own and then `completion(result)` on the receiver's thread,
/// from its event loop. Returns at once. Call it on the receiver's thread.
///
/// - Calls are independent of each other: their completions come in the order in which the works
///   end.
/// - The completion is dropped if by then the receiver is destroyed, or the application object is
///   destroyed or being so. Nothing waits for a work: neither the receiver's destructor nor the
///   application's.
/// - A work that throws, or that no thread could be started for, has the result `Result()`, and its
///   completion comes all the same.
/// - `work` and all it holds is destroyed before the completion is posted, on the thread that ran
///   it. A dropped completion may be destroyed on that thread too.
/// - A work still running when the process ends is ended with it. It must use nothing that the end
///   of `main` destroys, or `main` must end without destroying (`std::_Exit`).
template <std::invocable Work, std::invocable<std::invoke_result_t<Work&>> Completion>
requires std::default_initializable<std::invoke_result_t<Work&>>
void runInBackground(Work work, QObject* receiver, Completion completion) {
    // Shared, because a std::function must be copyable, and what is given here need not be.
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
