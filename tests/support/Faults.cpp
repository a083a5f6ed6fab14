// The program's own definitions take the place of the C library's, which they look up and call.

#include "support/Faults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

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
    if (!fault.active || fault.call != call || ++fault.calls < fault.at) {
        return false;
    }
    ++fault.failures;
    errno = fault.error;
    return true;
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
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
    return fails(Fault::Call::Open) ? -1 : next(name, flags);
}

}  // extern "C"
