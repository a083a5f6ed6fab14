// The functions at the end replace those of the C library. They find the originals with dlsym and
// call them.

#include "support/Faults.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <limits>
#include <mutex>
#include <pthread.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace ambulet {

namespace {

struct {
    bool active = false;
    Fault::Call call{};
    int at = 0;
    int error = 0;
    bool isShort = false;
    int calls = 0;
    int failures = 0;
} fault;

bool fails(Fault::Call call) {
    const bool isOver = fault.error == EINTR && fault.failures > 0;
    if (!fault.active || isOver || fault.call != call || ++fault.calls < fault.at) {
        return false;
    }
    ++fault.failures;
    errno = fault.error;
    return true;
}

bool noBirthTimes = false;
bool otherDevices = false;
bool noThreads = false;

struct {
    std::string path;
    std::function<void()> action;
} beforeOpening;

void actBeforeOpening(const char* path) {
    if (path != nullptr && !beforeOpening.path.empty() && path == beforeOpening.path) {
        beforeOpening.path.clear();
        beforeOpening.action();
    }
}

std::function<void()> beforeLocking;

struct {
    std::mutex mutex;
    bool active = false;
    std::vector<std::string> paths;
} openLog;

struct Hanging {
    std::mutex mutex;
    std::condition_variable released;
    std::string folder = std::getenv("AMBULET_HANG") == nullptr ? "" : std::getenv("AMBULET_HANG");
    const bool forTheRun = !folder.empty();
    int waiting = 0;
    bool mainThreadHasAccessed = false;
};
// Never destroyed, because a thread may still be waiting when the process ends.
Hanging& hanging = *new Hanging;

// True if the call must fail, because the main thread accesses the hanging folder. Other threads
// that access it wait here until it is released; with AMBULET_HANG, the main thread, too.
bool hangs(const char* path) {
    std::unique_lock lock(hanging.mutex);
    if (hanging.folder.empty() || path == nullptr ||
        !std::string_view(path).starts_with(hanging.folder)) {
        return false;
    }
    if (!hanging.forTheRun && getpid() == gettid()) {
        hanging.mainThreadHasAccessed = true;
        errno = ENOENT;
        return true;
    }
    ++hanging.waiting;
    hanging.released.wait(lock, [] { return hanging.folder.empty(); });
    --hanging.waiting;
    return false;
}

void logOpen(const char* path) {
    const std::lock_guard lock(openLog.mutex);
    if (openLog.active && path != nullptr) {
        openLog.paths.emplace_back(path);
    }
}

// The number of std::threads that can still be started. Threads that libraries start in other ways
// do not count.
std::atomic<int> threadsLeft = std::getenv("AMBULET_THREADS") == nullptr
                                   ? std::numeric_limits<int>::max()
                                   : std::atoi(std::getenv("AMBULET_THREADS"));

bool isRefused(void* (*body)(void*)) {
    Dl_info info{};
    // Without a limit, dladdr() must not be called: it may block in a process made by fork().
    return std::getenv("AMBULET_THREADS") != nullptr &&
           dladdr(reinterpret_cast<void*>(body), &info) != 0 && info.dli_fname != nullptr &&
           std::string_view(info.dli_fname).find("libstdc++") != std::string_view::npos &&
           threadsLeft.fetch_sub(1) <= 0;
}

// The environment variable AMBULET_SLOW_READ is the number of milliseconds by which each pread is
// delayed. The program reads only exports by pread.
void delayRead() {
    static const char* const text = std::getenv("AMBULET_SLOW_READ");
    if (text != nullptr) {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(text)));
    }
}

// The environment variable AMBULET_READ_ERROR is an offset. Reading by pread fails at this offset
// and after it, in every file.
const off_t readError = std::getenv("AMBULET_READ_ERROR") == nullptr
                            ? std::numeric_limits<off_t>::max()
                            : std::atoll(std::getenv("AMBULET_READ_ERROR"));

// Delays the read. Returns the number of bytes that can be read; -1, with errno set, if reading
// fails.
ssize_t readable(off_t offset, size_t size) {
    delayRead();
    if (offset >= readError) {
        errno = EIO;
        return -1;
    }
    return static_cast<ssize_t>(std::min<off_t>(readError - offset, static_cast<off_t>(size)));
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Calls the C library's function `name`. Fails instead if the path is in the hanging folder and
// this is the main thread.
template <typename Argument>
int unlessHanging(const char* name, const char* path, Argument argument) {
    return hangs(path) ? -1 : real<int(const char*, Argument)>(name)(path, argument);
}

int openIn(int folder, const char* path, int flags, va_list arguments) {
    static auto* const next = real<int(int, const char*, int, ...)>("openat");
    // The mode is passed only if the flags may create a file.
    const bool mayCreate = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = mayCreate ? va_arg(arguments, mode_t) : 0;
    logOpen(path);
    actBeforeOpening(path);
    return hangs(path) ? -1 : next(folder, path, flags, mode);
}

}  // namespace

Fault::Fault(Call call, int at, int error, bool isShort) {
    fault = {true, call, at, error, isShort, 0, 0};
}

Fault::~Fault() {
    fault.active = false;
}

int Fault::failures() const {
    return fault.failures;
}

NoBirthTimes::NoBirthTimes() {
    noBirthTimes = true;
}

NoBirthTimes::~NoBirthTimes() {
    noBirthTimes = false;
}

OtherDevices::OtherDevices() {
    otherDevices = true;
}

OtherDevices::~OtherDevices() {
    otherDevices = false;
}

NoThreads::NoThreads() {
    noThreads = true;
}

NoThreads::~NoThreads() {
    noThreads = false;
}

HangingFolder::HangingFolder(const std::string& folder) {
    const std::lock_guard lock(hanging.mutex);
    hanging.folder = folder;
    hanging.mainThreadHasAccessed = false;
}

HangingFolder::~HangingFolder() {
    const std::lock_guard lock(hanging.mutex);
    hanging.folder.clear();
    hanging.released.notify_all();
}

bool HangingFolder::otherThreadWaits() const {
    const std::lock_guard lock(hanging.mutex);
    return hanging.waiting > 0;
}

bool HangingFolder::mainThreadHasAccessed() const {
    const std::lock_guard lock(hanging.mutex);
    return hanging.mainThreadHasAccessed;
}

BeforeOpening::BeforeOpening(const std::string& path, const std::function<void()>& action) {
    beforeOpening = {path, action};
}

BeforeOpening::~BeforeOpening() {
    beforeOpening.path.clear();
}

BeforeLocking::BeforeLocking(const std::function<void()>& action) {
    beforeLocking = action;
}

BeforeLocking::~BeforeLocking() {
    beforeLocking = nullptr;
}

OpenLog::OpenLog() {
    const std::lock_guard lock(openLog.mutex);
    openLog.paths.clear();
    openLog.active = true;
}

OpenLog::~OpenLog() {
    const std::lock_guard lock(openLog.mutex);
    openLog.active = false;
}

std::vector<std::string> OpenLog::paths() const {
    const std::lock_guard lock(openLog.mutex);
    return openLog.paths;
}

}  // namespace ambulet

using ambulet::fails;
using ambulet::Fault;

extern "C" {

ssize_t write(int file, const void* data, size_t size) {
    static auto* const next = ambulet::real<ssize_t(int, const void*, size_t)>("write");
    if (!fails(Fault::Call::Write)) {
        return next(file, data, size);
    }
    const bool half = ambulet::fault.isShort && ambulet::fault.failures == 1 && size > 1;
    return half ? next(file, data, size / 2) : -1;
}

ssize_t pread(int file, void* data, size_t size, off_t offset) {
    static auto* const next = ambulet::real<ssize_t(int, void*, size_t, off_t)>("pread");
    const ssize_t count = ambulet::readable(offset, size);
    return count < 0 ? count : next(file, data, static_cast<size_t>(count), offset);
}

ssize_t pread64(int file, void* data, size_t size, off64_t offset) {
    static auto* const next = ambulet::real<ssize_t(int, void*, size_t, off64_t)>("pread64");
    const ssize_t count = ambulet::readable(offset, size);
    return count < 0 ? count : next(file, data, static_cast<size_t>(count), offset);
}

ssize_t read(int file, void* data, size_t size) {
    static auto* const next = ambulet::real<ssize_t(int, void*, size_t)>("read");
    return fails(Fault::Call::Read) ? -1 : next(file, data, size);
}

int flock(int file, int operation) noexcept {
    static auto* const next = ambulet::real<int(int, int)>("flock");
    if (ambulet::beforeLocking) {
        ambulet::beforeLocking();
    }
    return fails(Fault::Call::Flock) ? -1 : next(file, operation);
}

int fsync(int file) {
    static auto* const next = ambulet::real<int(int)>("fsync");
    return fails(Fault::Call::Fsync) ? -1 : next(file);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const next = ambulet::real<int(const char*, const char*)>("rename");
    return fails(Fault::Call::Rename) ? -1 : next(from, to);
}

int mkostemp(char* name, int flags) {
    static auto* const next = ambulet::real<int(char*, int)>("mkostemp");
    ambulet::actBeforeOpening(name);
    return fails(Fault::Call::Open) ? -1 : next(name, flags);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                   void* argument) noexcept {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const next = ambulet::real<Create>("pthread_create");
    return ambulet::noThreads || ambulet::isRefused(body)
               ? EAGAIN
               : next(thread, attributes, body, argument);
}

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept {
    static auto* const next =
        ambulet::real<int(int, const char*, int, unsigned, struct statx*)>("statx");
    if (ambulet::hangs(path)) {
        return -1;
    }
    const int result = next(folder, path, flags, mask, status);
    if (ambulet::noBirthTimes) {
        status->stx_mask &= ~STATX_BTIME;
    }
    status->stx_dev_minor += ambulet::otherDevices ? 100 : 0;
    return result;
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const int file = ambulet::openIn(AT_FDCWD, path, flags, arguments);
    va_end(arguments);
    return file;
}

int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const int file = ambulet::openIn(folder, path, flags, arguments);
    va_end(arguments);
    return file;
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

DIR* opendir(const char* path) {
    static auto* const next = ambulet::real<DIR*(const char*)>("opendir");
    ambulet::logOpen(path);
    return ambulet::hangs(path) ? nullptr : next(path);
}

int stat(const char* path, struct stat* status) noexcept {
    return ambulet::unlessHanging("stat", path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    return ambulet::unlessHanging("lstat", path, status);
}

int stat64(const char* path, struct stat64* status) noexcept {
    return ambulet::unlessHanging("stat64", path, status);
}

int lstat64(const char* path, struct stat64* status) noexcept {
    return ambulet::unlessHanging("lstat64", path, status);
}

int access(const char* path, int mode) noexcept {
    return ambulet::unlessHanging("access", path, mode);
}

ssize_t getxattr(const char* path, const char* name, void* value, size_t size) noexcept {
    static auto* const next =
        ambulet::real<ssize_t(const char*, const char*, void*, size_t)>("getxattr");
    return ambulet::hangs(path) ? -1 : next(path, name, value, size);
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    static auto* const next = ambulet::real<ssize_t(const char*, char*, size_t)>("readlink");
    return ambulet::hangs(path) ? -1 : next(path, target, size);
}

}  // extern "C"
