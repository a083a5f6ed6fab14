#pragma once

#include <string>
#include <vector>

namespace ambulet {

// If a test program links Faults.cpp, its calls to the operating system go through it. Each class
// has an effect on the whole process as long as its object exists. Only one object of each class
// may exist at a time.

/// A class whose objects cannot be copied.
class NotCopyable {
  public:
    NotCopyable(const NotCopyable&) = delete;
    NotCopyable& operator=(const NotCopyable&) = delete;

  protected:
    NotCopyable() = default;
    ~NotCopyable() = default;
};

/// Makes a call to the operating system fail.
class Fault : NotCopyable {
  public:
    enum class Call { Open, Write, Fsync, Rename };

    /// The call number `at` (1 is the next one) and all later calls fail with `error`. If `isShort`
    /// is set, a failing write first writes half of its data.
    Fault(Call call, int at, int error, bool isShort = false);
    ~Fault();

    /// The number of calls that have failed.
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

/// Makes starting a thread fail.
class NoThreads : NotCopyable {
  public:
    NoThreads();
    ~NoThreads();
};

/// Simulates a mount that hangs: threads that access anything below `folder` wait until this object
/// is destroyed. The main thread does not wait; for it, nothing exists there.
///
/// The environment variable AMBULET_HANG does the same for a folder for the whole run of a program,
/// but there the main thread waits, too.
class HangingFolder : NotCopyable {
  public:
    explicit HangingFolder(const std::string& folder);
    ~HangingFolder();

    bool otherThreadWaits() const;
    bool mainThreadHasAsked() const;
};

/// Records the paths of all files and folders that the process opens.
class OpenLog : NotCopyable {
  public:
    OpenLog();
    ~OpenLog();

    std::vector<std::string> paths() const;
};

}  // namespace ambulet
