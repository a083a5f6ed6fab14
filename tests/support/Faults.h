#pragma once

#include <string>

namespace ambulet {

/// Lets a call to the operating system fail, in this process, for as long as it lives. A test
/// program that links Faults.cpp has these calls pass through it. One at a time, one thread.
class Fault {
  public:
    enum class Call { Open, Write, Fsync, Rename };

    /// The call number `at` (1 is the next one) and all later ones fail with `error`. A failing
    /// write first writes half of what it was given where `isShort` is set.
    Fault(Call call, int at, int error, bool isShort = false);
    ~Fault();
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;

    /// How many calls have failed.
    int failures() const;
};

}  // namespace ambulet
