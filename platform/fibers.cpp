#include "platform/fibers.h"

#include <cxxabi.h>

#include <algorithm>
#include <boost/context/fiber.hpp>
#include <boost/context/protected_fixedsize_stack.hpp>
#include <cstring>
#include <stdexcept>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#define NIMBRY_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NIMBRY_ADDRESS_SANITIZER 1
#endif
#endif

#ifdef NIMBRY_ADDRESS_SANITIZER
#include <sanitizer/common_interface_defs.h>
#endif

namespace nimbry::platform {

namespace context = boost::context;

namespace {

/// The memory of a stack, as the address sanitizer wants to be told of it.
struct StackBounds {
    const void* bottom = nullptr;  ///< lowest address
    std::size_t size = 0;
};

/// Tells the address sanitizer about one change of stacks, seen from the side that leaves: leaving() before the switch,
/// arrived() after it, when this side runs again. Does nothing in other builds.
class StackSwitch {
public:
    /// `for_good`: nothing on the stack that is left will be used again.
    void leaving([[maybe_unused]] StackBounds to, [[maybe_unused]] bool for_good = false) {
#ifdef NIMBRY_ADDRESS_SANITIZER
        __sanitizer_start_switch_fiber(for_good ? nullptr : &fake_stack_, to.bottom, to.size);
#endif
    }

    /// The bounds of the stack from which this side was entered.
    StackBounds arrived() {
        StackBounds from;
#ifdef NIMBRY_ADDRESS_SANITIZER
        __sanitizer_finish_switch_fiber(fake_stack_, &from.bottom, &from.size);
#endif
        return from;
    }

private:
    [[maybe_unused]] void* fake_stack_ = nullptr;
};

/// What the C++ runtime keeps per thread about exceptions: those being handled, and the number in flight. It belongs to
/// the stack that handles them, so it changes hands with the stack; otherwise two fibers that wait inside their catch
/// blocks would end each other's exceptions. The layout is laid down by the Itanium C++ ABI.
struct ExceptionsInHand {
    void* caught = nullptr;
    unsigned int uncaught = 0;

    static ExceptionsInHand exchange(const ExceptionsInHand& next) {
        ExceptionsInHand previous;
        void* const globals = abi::__cxa_get_globals();
        std::memcpy(&previous, globals, sizeof previous);
        std::memcpy(globals, &next, sizeof next);
        return previous;
    }
};

}  // namespace

class Fiber {
public:
    Fiber() {
        context::protected_fixedsize_stack allocator(Fibers::stack_size);
        const context::stack_context stack = allocator.allocate();
        bounds_ = {static_cast<const char*>(stack.sp) - stack.size, stack.size};
        inside_ = context::fiber(std::allocator_arg, context::preallocated(stack.sp, stack.size, stack), allocator,
                                 [this](context::fiber&& outside) { return live(std::move(outside)); });
    }

    /// Ends a fiber that is idle.
    ~Fiber() {
        work = nullptr;
        enter();
    }

    Fiber(const Fiber&) = delete;
    Fiber& operator=(const Fiber&) = delete;

    /// From outside: runs what stands on this stack until it suspends.
    void enter() {
        const ExceptionsInHand mine = ExceptionsInHand::exchange(exceptions_);
        StackSwitch change;
        change.leaving(bounds_);
        inside_ = std::move(inside_).resume();
        change.arrived();
        exceptions_ = ExceptionsInHand::exchange(mine);
    }

    /// From inside: goes back to where enter() was called.
    void leave() {
        StackSwitch change;
        change.leaving(outside_bounds_);
        outside_ = std::move(outside_).resume();
        outside_bounds_ = change.arrived();
    }

    /// What enter() starts when the fiber is idle; nothing: it ends.
    std::function<void()> work;
    /// The fiber, or none, that called enter() last.
    Fiber* caller = nullptr;
    bool idle = true;

private:
    /// The bottom of every fiber's calls: one work after the other until there is none. An exception that leaves a
    /// work ends the program here, where its cause still stands on the stack.
    context::fiber live(context::fiber&& outside) noexcept {
        outside_ = std::move(outside);
        outside_bounds_ = StackSwitch().arrived();
        while (work) {
            work();
            work = nullptr;
            idle = true;
            leave();
        }
        StackSwitch().leaving(outside_bounds_, true);
        return std::move(outside_);
    }

    StackBounds bounds_;
    context::fiber inside_;
    context::fiber outside_;
    StackBounds outside_bounds_;
    ExceptionsInHand exceptions_;
};

Fibers::Fibers() = default;
Fibers::~Fibers() = default;

void Fibers::run(std::function<void()> work) {
    if (idle_.empty()) {
        fibers_.push_back(std::make_unique<Fiber>());
        idle_.push_back(fibers_.back().get());
    }
    Fiber& fiber = *idle_.back();
    idle_.pop_back();
    fiber.work = std::move(work);
    fiber.idle = false;
    enter(fiber);
}

void Fibers::suspend() {
    if (current_ == nullptr) throw std::logic_error("a wait outside a conversation");
    current_->leave();
}

void Fibers::resume(Fiber& fiber) {
    if (current_ != nullptr || fiber.idle)
        throw std::logic_error("a fiber is resumed from the main stack, while it is suspended");
    enter(fiber);
}

void Fibers::enter(Fiber& fiber) {
    fiber.caller = std::exchange(current_, &fiber);
    fiber.enter();
    current_ = fiber.caller;
    if (fiber.idle) {
        idle_.push_back(&fiber);
        if (current_ == nullptr) retire_surplus();
    }
}

void Fibers::retire_surplus() {
    while (idle_.size() > idle_kept) {
        Fiber* const surplus = idle_.back();
        idle_.pop_back();
        std::erase_if(fibers_, [surplus](const auto& fiber) { return fiber.get() == surplus; });
    }
}

}  // namespace nimbry::platform
