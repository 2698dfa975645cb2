#include "platform/loop_pauses.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/precise_timer.h"

namespace nimbry::platform {

LoopPauses::LoopPauses(const Clock& clock) : clock_(clock) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &LoopPauses::resume_due);
}

void LoopPauses::pause(Milliseconds how_long) {
    suspend_until(clock_.monotonic() + how_long, false);
}

bool LoopPauses::wait_until(const std::function<bool()>& condition, std::optional<Milliseconds> limit) {
    const Instant begun = clock_.monotonic();
    while (!condition()) {
        Instant next = clock_.monotonic() + look_again;
        if (limit) {
            const Instant last = begun + *limit;
            if (clock_.monotonic() >= last) return false;
            next = std::min(next, last);
        }
        suspend_until(next, true);
    }
    return true;
}

void LoopPauses::start(std::function<void()> work) {
    fibers_.run([this, work = std::move(work)] {
        try {
            work();
        } catch (const WaitCancelled&) {
            // The program is closing: the conversation has unwound, and nobody waits for its result.
        }
        unhurried_.erase(fibers_.current());
    });
    settle();
}

void LoopPauses::cancel_all() {
    cancelled_ = true;
    bring_forward([this](const Wait& wait) { return cancels(wait.fiber); });
}

void LoopPauses::look_now() {
    bring_forward([](const Wait& wait) { return wait.looks; });
}

void LoopPauses::bring_forward(const std::function<bool(const Wait&)>& which) {
    const Instant now = clock_.monotonic();
    for (Wait& wait : waits_) {
        if (which(wait)) wait.due = std::min(wait.due, now);
    }
    std::stable_sort(waits_.begin(), waits_.end(), [](const Wait& a, const Wait& b) { return a.due < b.due; });
    arm();
}

void LoopPauses::hold_unhurried() {
    ++unhurried_[fibers_.current()];
}

void LoopPauses::release_unhurried() {
    --unhurried_[fibers_.current()];
}

void LoopPauses::finish() {
    cancelled_ = finished_ = true;
    while (!waits_.empty()) resume(waits_.begin());
}

bool LoopPauses::cancels(Fiber* fiber) const {
    if (!cancelled_) return false;
    const auto held = unhurried_.find(fiber);
    return finished_ || held == unhurried_.end() || held->second == 0;
}

void LoopPauses::throw_if_cancelled() {
    if (cancels(fibers_.current())) throw WaitCancelled{};
}

void LoopPauses::suspend_until(Instant due, bool looks) {
    if (fibers_.current() == nullptr) throw std::logic_error("a wait outside a conversation");
    throw_if_cancelled();
    const Wait wait{fibers_.current(), due, looks, next_order_++};
    waits_.insert(std::upper_bound(waits_.begin(), waits_.end(), wait,
                                   [](const Wait& a, const Wait& b) { return a.due < b.due; }),
                  wait);
    arm();
    fibers_.suspend();
    throw_if_cancelled();
}

void LoopPauses::resume_due() {
    // A wait that begins in this round waits for the next one, even for no time at all: between two rounds the event
    // loop sees to its sockets.
    const std::uint64_t begun_before = next_order_;
    const Instant now = clock_.monotonic();
    const auto is_due = [&](const Wait& wait) { return wait.due <= now && wait.order < begun_before; };
    for (;;) {
        const auto next = std::find_if(waits_.begin(), waits_.end(), is_due);
        if (next == waits_.end()) break;
        resume(next);
    }
    settle();
}

void LoopPauses::resume(std::vector<Wait>::iterator wait) {
    Fiber* const fiber = wait->fiber;
    waits_.erase(wait);
    fibers_.resume(*fiber);
}

void LoopPauses::arm() {
    if (waits_.empty()) {
        timer_.stop();
    } else {
        arm_for(timer_, waits_.front().due, clock_.monotonic());
    }
}

void LoopPauses::settle() {
    if (fibers_.current() != nullptr) return;
    arm();
    if (settled_) settled_();
}

}  // namespace nimbry::platform
