#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ambulet {

/// A class whose objects cannot be copied.
class NotCopyable {
  public:
    NotCopyable(const NotCopyable&) = delete;
    NotCopyable& operator=(const NotCopyable&) = delete;

  protected:
    NotCopyable() = default;
    ~NotCopyable() = default;
};

// A test program that links Faults.cpp calls the operating system through it. Objects of the
// classes below affect the whole process while they exist. Only one object of each class may exist
// at a time.

/// Makes calls to the operating system fail.
class Fault : NotCopyable {
  public:
    /// `Open` is the creation of a temporary file (mkostemp).
    enum class Call { Open, Read, Write, Fsync, Rename, Flock };

    /// The first `at` - 1 calls of the kind `call` succeed. The later ones fail with `error`, with
    /// two exceptions:
    /// - If `error` is EINTR, only the first of them fails.
    /// - If `isShort` is set and the first of them is a write, it succeeds, but writes only half of
    ///   its data.
    Fault(Call call, int at, int error, bool isShort = false);
    ~Fault();

    /// The number of calls that have failed or, if `isShort` is set, have written half.
    int failures() const;
};

/// Hides the birth times of files. Some file systems have none.
class NoBirthTimes : NotCopyable {
  public:
    NoBirthTimes();
    ~NoBirthTimes();
};

/// Changes the device number of every file system.
class OtherDevices : NotCopyable {
  public:
    OtherDevices();
    ~OtherDevices();
};

/// Makes every start of a thread fail.
///
/// The environment variable AMBULET_THREADS limits the number of std::threads that a program can
/// start during its whole run. Threads that libraries start in other ways do not count.
class NoThreads : NotCopyable {
  public:
    NoThreads();
    ~NoThreads();
};

/// Simulates a mount that hangs: a thread that accesses `folder` or anything in it waits until this
/// object is destroyed. For the main thread, `folder` does not exist instead.
///
/// If the environment variable AMBULET_HANG is the path of a folder, every thread that accesses it,
/// including the main thread, waits until the process ends.
class HangingFolder : NotCopyable {
  public:
    explicit HangingFolder(const std::string& folder);
    ~HangingFolder();

    bool otherThreadWaits() const;
    bool mainThreadHasAccessed() const;
};

/// Calls a function right before the process opens `path` for the first time. For a temporary file,
/// `path` is the template of the file's name.
class BeforeOpening : NotCopyable {
  public:
    BeforeOpening(const std::string& path, const std::function<void()>& action);
    ~BeforeOpening();
};

/// Calls a function right before each call of flock().
class BeforeLocking : NotCopyable {
  public:
    explicit BeforeLocking(const std::function<void()>& action);
    ~BeforeLocking();
};

/// Records the paths that the process passes to open, openat and opendir.
class OpenLog : NotCopyable {
  public:
    OpenLog();
    ~OpenLog();

    std::vector<std::string> paths() const;
};

}  // namespace ambulet
