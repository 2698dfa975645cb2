#pragma once

#include <functional>
#include <optional>

namespace nimbry::platform::test {

/// While it lives some calls of the system are answered by the test: what no pseudo-terminal and no file system of the
/// machine can be made to say. Everything else goes to the kernel. One at a time.
class SystemCalls {
public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    /// Answers an ioctl() with 0, or leaves it to the kernel (nothing).
    std::function<std::optional<int>(unsigned long request, void* argument)> on_ioctl;
    /// The error that renameat2() ends with; 0: the kernel's answer.
    int renameat2_error = 0;
    /// The error that fallocate() ends with; 0: the kernel's answer.
    int fallocate_error = 0;
};

}  // namespace nimbry::platform::test
