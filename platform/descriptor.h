#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace nimbry::platform {

/// Owns one descriptor of the system and closes it.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes over what open(), socket() and the like have returned; a negative number is none.
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    explicit operator bool() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

    /// Gives the descriptor away; the caller closes it.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

    /// Closes it now. 0, or the error number: a file on a share may tell only here that it could not be written. The
    /// interrupted close of Linux has closed.
    int close() {
        const int closing = std::exchange(number_, -1);
        if (closing < 0 || ::close(closing) == 0 || errno == EINTR) return 0;
        return errno;
    }

private:
    int number_ = -1;
};

}  // namespace nimbry::platform
