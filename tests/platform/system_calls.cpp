#include "tests/platform/system_calls.h"

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <utility>

namespace nimbry::platform::test {

namespace {
SystemCalls* answering = nullptr;

int failed(int error) {
    errno = error;
    return -1;
}
}  // namespace

SystemCalls::SystemCalls() {
    if (std::exchange(answering, this) != nullptr) std::abort();
}

SystemCalls::~SystemCalls() {
    answering = nullptr;
}

}  // namespace nimbry::platform::test

// The program's own definitions are found before those of the C library, by the code under test and by Qt. They are
// declared here as the library declares them, without its headers: a difference would not compile.

extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept {
    using nimbry::platform::test::answering;
    va_list rest;
    va_start(rest, request);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    if (answering != nullptr && answering->on_ioctl) {
        if (const std::optional<int> answer = answering->on_ioctl(request, argument)) return *answer;
    }
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

extern "C" int renameat2(int from_folder, const char* from, int to_folder, const char* to,
                         unsigned int flags) noexcept {
    using nimbry::platform::test::answering;
    if (answering != nullptr && answering->renameat2_error != 0)
        return nimbry::platform::test::failed(answering->renameat2_error);
    return static_cast<int>(syscall(SYS_renameat2, from_folder, from, to_folder, to, flags));
}

extern "C" int fallocate(int descriptor, int mode, off_t begin, off_t length) {
    using nimbry::platform::test::answering;
    if (answering != nullptr && answering->fallocate_error != 0)
        return nimbry::platform::test::failed(answering->fallocate_error);
    return static_cast<int>(syscall(SYS_fallocate, descriptor, mode, begin, length));
}
