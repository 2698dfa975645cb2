#pragma once

#include <utility>

namespace nimbry {

/// A flag that says "this work is under way" and guards it against being entered twice while it waits. Set by holding
/// it; clear again when the holder goes out of scope, on every way out.
class BusyFlag {
public:
    /// Holds a BusyFlag for as long as it lives; empty when the flag was taken already.
    class Held {
    public:
        Held() = default;
        /// Takes charge of a flag that is set already: it falls with this object.
        explicit Held(BusyFlag& flag) : flag_(&flag) {}
        Held(Held&& other) noexcept : flag_(std::exchange(other.flag_, nullptr)) {}
        Held& operator=(Held&& other) noexcept {
            if (this != &other) {
                release();
                flag_ = std::exchange(other.flag_, nullptr);
            }
            return *this;
        }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        ~Held() { release(); }

        /// True when this object holds the flag.
        explicit operator bool() const { return flag_ != nullptr; }

        /// Lets go before the end of the scope.
        void release() {
            if (flag_ != nullptr) std::exchange(flag_, nullptr)->set_ = false;
        }

    private:
        BusyFlag* flag_ = nullptr;
    };

    BusyFlag() = default;
    BusyFlag(const BusyFlag&) = delete;
    BusyFlag& operator=(const BusyFlag&) = delete;

    /// Takes the flag if it is clear. The flag must outlive the result.
    [[nodiscard]] Held try_hold() {
        if (set_) return {};
        set_ = true;
        return Held(*this);
    }

    explicit operator bool() const { return set_; }

    /// For the flags that one routine sets and another clears (`dworkingb`, `changebusy`).
    void set() { set_ = true; }
    void clear() { set_ = false; }

private:
    bool set_ = false;
};

}  // namespace nimbry
