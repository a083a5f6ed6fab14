#pragma once

#include <string>
#include <vector>

namespace ambulet {

// If a test program links Faults.cpp, its calls to the operating system go through it. Each class
// has an effect on the whole process as long as its object exists. Only one object of each class
// may exist at a time.

/// Makes a call to the operating system fail.
class Fault {
  public:
    enum class Call { Open, Write, Fsync, Rename };

    /// The call number `at` (1 is the next one) and all later calls fail with `error`. If `isShort`
    /// is set, a failing write first writes half of its data.
    Fault(Call call, int at, int error, bool isShort = false);
    ~Fault();
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;

    /// The number of calls that have failed.
    int failures() const;
};

/// Hides the birth times of files. Some file systems have none.
class NoBirthTimes {
  public:
    NoBirthTimes();
    ~NoBirthTimes();
    NoBirthTimes(const NoBirthTimes&) = delete;
    NoBirthTimes& operator=(const NoBirthTimes&) = delete;
};

/// Changes the device number of every file system.
class OtherDevices {
  public:
    OtherDevices();
    ~OtherDevices();
    OtherDevices(const OtherDevices&) = delete;
    OtherDevices& operator=(const OtherDevices&) = delete;
};

/// Makes starting a thread fail.
class NoThreads {
  public:
    NoThreads();
    ~NoThreads();
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
};

/// Simulates a mount that hangs: threads that access anything below `folder` wait until this object
/// is destroyed. The main thread does not wait; for it, nothing exists there.
///
/// The environment variable AMBULET_HANG does the same for a folder for the whole run of a program,
/// but there the main thread waits, too.
class HangingFolder {
  public:
    explicit HangingFolder(const std::string& folder);
    ~HangingFolder();
    HangingFolder(const HangingFolder&) = delete;
    HangingFolder& operator=(const HangingFolder&) = delete;

    bool otherThreadWaits() const;
    bool mainThreadHasAsked() const;
};

/// Records the paths of all files and folders that the process opens.
class OpenLog {
  public:
    OpenLog();
    ~OpenLog();
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;

    std::vector<std::string> paths() const;
};

}  // namespace ambulet
