#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace nimbry::platform {

/// One stack that can be left in the middle of a call and come back to. Made and owned by Fibers.
class Fiber;

/// Procedures that can be left in the middle and gone on with later, all on the one thread that owns this object.
///
/// The thread's own stack is the main stack; the event loop runs there. run() and resume() go to a fiber, suspend()
/// goes back to whoever went there. Each fiber has `stack_size` bytes of stack with a guard page below: overrunning it
/// ends the process at once instead of damaging another fiber. Stacks that are free again are kept for the next run().
///
/// Exceptions may be thrown and caught inside a fiber, and a fiber may suspend inside a catch block; none may leave its
/// work.
class Fibers {
public:
    static constexpr std::size_t stack_size = std::size_t{256} * 1024;

    Fibers();
    /// No fiber may be suspended any more: what stands on its stack would never be destroyed.
    ~Fibers();
    Fibers(const Fibers&) = delete;
    Fibers& operator=(const Fibers&) = delete;

    /// Runs `work` on a fiber of its own. Returns when the work has ended or has suspended for the first time. May be
    /// called from a fiber: that one waits in this call meanwhile.
    void run(std::function<void()> work);

    /// From inside a fiber: goes back to where run() or resume() was called. Returns when somebody resumes this fiber.
    void suspend();

    /// From the main stack: goes on with a suspended fiber. Returns when it has ended or suspended again.
    void resume(Fiber& fiber);

    /// The fiber that runs now; nullptr on the main stack.
    [[nodiscard]] Fiber* current() const { return current_; }

    /// Stacks held, in use or free. For tests.
    [[nodiscard]] std::size_t stacks() const { return fibers_.size(); }

private:
    void enter(Fiber& fiber);
    void retire_surplus();

    /// Free stacks kept. A burst of overlapping waits may need more for a while.
    static constexpr std::size_t idle_kept = 8;

    std::vector<std::unique_ptr<Fiber>> fibers_;
    std::vector<Fiber*> idle_;
    Fiber* current_ = nullptr;
};

}  // namespace nimbry::platform
