#pragma once

#include <string>
#include <vector>

namespace ambulet {

// A test program that links Faults.cpp has its calls to the operating system pass through it. One
// object of each class at a time.

/// Lets a call to the operating system fail, in this process, for as long as it lives.
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

/// No file has a birth time, as on some file systems, for as long as it lives.
class NoBirthTimes {
  public:
    NoBirthTimes();
    ~NoBirthTimes();
    NoBirthTimes(const NoBirthTimes&) = delete;
    NoBirthTimes& operator=(const NoBirthTimes&) = delete;
};

/// Every file system has another device number, for as long as it lives.
class OtherDevices {
  public:
    OtherDevices();
    ~OtherDevices();
    OtherDevices(const OtherDevices&) = delete;
    OtherDevices& operator=(const OtherDevices&) = delete;
};

/// The process gets no further thread for as long as it lives.
class NoThreads {
  public:
    NoThreads();
    ~NoThreads();
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
};

/// A file system that does not answer: who asks for anything below `folder` waits until this object
/// goes. The main thread does not wait; it is told that there is nothing. The environment variable
/// AMBULET_HANG names such a folder for a whole run, in which the main thread waits, too.
class HangingFolder {
  public:
    explicit HangingFolder(const std::string& folder);
    ~HangingFolder();
    HangingFolder(const HangingFolder&) = delete;
    HangingFolder& operator=(const HangingFolder&) = delete;

    bool otherThreadWaits() const;
    bool mainThreadHasAsked() const;
};

/// The paths of all files and folders that the process opens for as long as it lives.
class OpenLog {
  public:
    OpenLog();
    ~OpenLog();
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;

    std::vector<std::string> paths() const;
};

}  // namespace ambulet
