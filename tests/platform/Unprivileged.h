#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ambulet {

/// Runs `body` in another process that file permissions restrict: if the tests run as root, this
/// process runs as the user nobody. `body` must create the files that it needs. Returns whether all
/// expectations of `body` passed. Failures are printed.
inline bool passesUnprivileged(const std::function<void()>& body) {
    constexpr unsigned nobody = 65534;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 &&
                                                setuid(nobody) == 0);
        EXPECT_TRUE(dropped);
        if (dropped) {
            body();
        }
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

}  // namespace ambulet
