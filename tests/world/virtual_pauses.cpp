#include "tests/world/virtual_pauses.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace nimbry::test {

namespace {
constexpr Milliseconds poll_interval{1};
constexpr Instant never = Instant::max();
}  // namespace

/// One stack: the test's, or a pooled thread's.
struct VirtualPauses::Strand {
    std::thread thread;  // none for the test
    std::condition_variable turn;
    bool has_turn = false;

    std::function<void()> job;  // what start() gave it to run
    Strand* starter = nullptr;  // who goes on as soon as that job waits or ends
    int unhurried = 0;
    bool is_test = false;

    // The wait in which it stands.
    bool waits = false;
    bool last = false;
    bool wait_cancelled = false;
    bool wait_result = false;
    Turn turn_in_queue;
    const std::function<bool()>* condition = nullptr;
    Instant limit = never;
    std::exception_ptr condition_error;
};

VirtualPauses::VirtualPauses(VirtualClock& clock) : clock_(clock), running_(new_strand()) {
    running_->is_test = true;
    running_->has_turn = true;
}

VirtualPauses::~VirtualPauses() {
    end_all();
    if (failure_) {
        std::fputs("an exception left a conversation, and the test never waited again to see it\n", stderr);
        std::abort();
    }
}

void VirtualPauses::pause(Milliseconds how_long) {
    pause_until(clock_.monotonic() + how_long);
}

void VirtualPauses::pause_until(Instant when) {
    refuse_if_cancelled();
    // A pause of no length lets everything run that is due now, so it stands behind all of it.
    wait(when, when <= clock_.monotonic(), nullptr, when);
}

bool VirtualPauses::wait_until(const std::function<bool()>& condition, std::optional<Milliseconds> limit) {
    refuse_if_cancelled();
    const Instant now = clock_.monotonic();
    const Instant end = limit ? now + *limit : never;
    if (condition()) return true;
    if (end <= now) return false;
    return wait(std::min<Instant>(now + poll_interval, end), false, &condition, end);
}

void VirtualPauses::refuse_if_cancelled() const {
    if (ending_ || (cancelled_ && running_->unhurried == 0 && !running_->is_test)) throw WaitCancelled{};
}

/// Stands in the queue until its turn comes. True when the condition held.
bool VirtualPauses::wait(Instant due, bool last, const std::function<bool()>* condition, Instant limit) {
    Strand& self = *running_;
    self.last = last || self.is_test;
    self.condition = condition;
    self.limit = limit;
    enqueue_wait(self, due);
    if (Strand* starter = std::exchange(self.starter, nullptr)) {
        hand_over(self, *starter);
    } else {
        pass_on(self);
    }
    if (self.is_test) rethrow_failure();
    if (std::exchange(self.wait_cancelled, false)) throw WaitCancelled{};
    if (std::exception_ptr error = std::exchange(self.condition_error, nullptr)) std::rethrow_exception(error);
    return self.wait_result;
}

void VirtualPauses::enqueue_wait(Strand& strand, Instant due) {
    strand.waits = true;
    strand.turn_in_queue = Turn{due, strand.last, made_++};
    queue_.emplace(strand.turn_in_queue, Item{{}, &strand});
    if (!strand.is_test) ++waiting_;
}

/// Gives the baton to whoever is next, while `self` stands in the queue; returns when its own turn has come.
void VirtualPauses::pass_on(Strand& self) {
    if (find_next() == Next::waiter) {
        Strand& next = *take_front().waiter;
        if (&next != &self) hand_over(self, next);
        return;
    }
    hand_over(self, idle_strand());
}

/// Moves time to what is due next and tells what it is. A wait whose condition does not hold yet goes back into the
/// queue.
VirtualPauses::Next VirtualPauses::find_next() {
    for (;;) {
        const std::optional<Instant> wake = wake_when_ ? wake_when_() : std::nullopt;
        const Turn& front = queue_.begin()->first;  // there is one: the test itself waits while anybody asks
        if (wake && (*wake < front.due || (*wake == front.due && front.last))) {
            clock_.advance_to(*wake);
            return Next::wake;
        }
        clock_.advance_to(front.due);
        Strand* waiter = queue_.begin()->second.waiter;
        if (waiter == nullptr) return Next::event;
        if (poll(*waiter)) return Next::waiter;
        const Instant due = std::min<Instant>(clock_.monotonic() + poll_interval, waiter->limit);
        take_front();
        enqueue_wait(*waiter, due);
    }
}

/// True when the wait at the front of the queue is over.
bool VirtualPauses::poll(Strand& strand) {
    strand.wait_result = true;
    if (strand.condition == nullptr || strand.wait_cancelled) return true;
    try {
        if ((*strand.condition)()) return true;
    } catch (...) {
        strand.condition_error = std::current_exception();
        return true;
    }
    strand.wait_result = false;
    return clock_.monotonic() >= strand.limit;
}

VirtualPauses::Item VirtualPauses::take_front() {
    Item item = std::move(queue_.begin()->second);
    queue_.erase(queue_.begin());
    if (item.waiter != nullptr) {
        item.waiter->waits = false;
        if (!item.waiter->is_test) --waiting_;
    }
    return item;
}

VirtualPauses::Strand* VirtualPauses::new_strand() {
    return strands_.emplace_back(std::make_unique<Strand>()).get();
}

VirtualPauses::Strand& VirtualPauses::idle_strand() {
    if (idle_.empty()) {
        Strand* strand = new_strand();
        strand->thread = std::thread([this, strand] { lead(*strand); });
        return *strand;
    }
    Strand& strand = *idle_.back();
    idle_.pop_back();
    return strand;
}

/// Lets `to` run, and returns when the baton comes back to `from`.
void VirtualPauses::hand_over(Strand& from, Strand& to) {
    std::unique_lock lock(baton_);
    from.has_turn = false;
    to.has_turn = true;
    running_ = &to;
    to.turn.notify_one();
    from.turn.wait(lock, [&] { return from.has_turn; });
}

/// A pooled thread: runs the job it is given, or makes the next things happen, whenever it has the baton.
void VirtualPauses::lead(Strand& self) {
    {
        std::unique_lock lock(baton_);
        self.turn.wait(lock, [&] { return self.has_turn; });
    }
    while (!ending_) {
        if (self.job) {
            run(self, std::exchange(self.job, {}));
            if (Strand* starter = std::exchange(self.starter, nullptr)) {
                idle_.push_back(&self);
                hand_over(self, *starter);
            }
            continue;
        }
        switch (find_next()) {
            case Next::wake: run(self, wake_); break;
            case Next::event: run(self, take_front().event); break;
            case Next::waiter:
                idle_.push_back(&self);
                hand_over(self, *take_front().waiter);
                break;
        }
    }
    const std::lock_guard lock(baton_);
    running_ = strands_.front().get();
    running_->has_turn = true;
    running_->turn.notify_one();
}

void VirtualPauses::run(Strand& self, const std::function<void()>& work) {
    try {
        work();
    } catch (const WaitCancelled&) {
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
    }
    self.unhurried = 0;
}

void VirtualPauses::rethrow_failure() {
    if (std::exception_ptr failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
}

void VirtualPauses::start(std::function<void()> work) {
    if (ending_) return;
    Strand& self = *running_;
    Strand& other = idle_strand();
    other.job = std::move(work);
    other.starter = &self;
    hand_over(self, other);
    if (self.is_test) rethrow_failure();
}

void VirtualPauses::cancel_all() {
    cancelled_ = true;
    for (const std::unique_ptr<Strand>& strand : strands_) {
        if (!strand->waits || strand->is_test || strand->unhurried > 0) continue;
        queue_.erase(strand->turn_in_queue);
        --waiting_;
        strand->wait_cancelled = true;
        enqueue_wait(*strand, clock_.monotonic());
    }
}

void VirtualPauses::hold_unhurried() {
    ++running_->unhurried;
}
void VirtualPauses::release_unhurried() {
    --running_->unhurried;
}

std::size_t VirtualPauses::scripted() const {
    return queue_.size() - waiting_ - (strands_.front()->waits ? 1 : 0);
}

void VirtualPauses::at(Instant when, std::function<void()> event) {
    queue_.emplace(Turn{std::max(when, clock_.monotonic()), false, made_++}, Item{std::move(event), nullptr});
}

void VirtualPauses::after(MonotonicClock::duration delay, std::function<void()> event) {
    at(clock_.monotonic() + delay, std::move(event));
}

void VirtualPauses::set_wake_source(std::function<std::optional<Instant>()> when, std::function<void()> wake) {
    wake_when_ = std::move(when);
    wake_ = std::move(wake);
}

void VirtualPauses::end_all() {
    if (ending_) return;
    ending_ = true;
    Strand& test = *strands_.front();
    queue_.clear();
    for (const std::unique_ptr<Strand>& strand : strands_) {
        if (strand->is_test) continue;
        // One that waits unwinds first; one that is idle sees the end at once. Either way the baton comes back here.
        strand->wait_cancelled = strand->waits;
        hand_over(test, *strand);
        strand->thread.join();
    }
    waiting_ = 0;
    strands_.resize(1);
    idle_.clear();
}

}  // namespace nimbry::test
