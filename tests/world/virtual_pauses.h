#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <tuple>
#include <vector>

#include "engine/ports/pauses.h"
#include "tests/world/virtual_clock.h"

namespace nimbry::test {

/// Waiting in virtual time. Conversations overlap as they do in life, but exactly one thing runs at a time and the
/// order is the same in every run; a wait of an hour costs nothing but the work that falls into it.
///
/// The test itself is a conversation: `pauses.pause(10s)` in a test body lets ten seconds of the script happen,
/// everything due at the last instant included, and returns. cancel_all() does not touch the test's own waits.
///
/// What happens next is what is due first: scripted events and waits in the order in which they were made, then the
/// wake source (the engine's timers), then the test. Time stands still while something runs.
///
///     pauses.start([&] { pauses.pause(20s); log("slow"); });
///     pauses.after(5s, [&] { log("fast"); });
///     pauses.pause(1min);                            // "fast" at 5 s, "slow" at 20 s
///
/// A conversation that waits keeps its stack: each has a thread of its own while it waits, and one baton goes from
/// thread to thread. A scripted event that never waits runs on the stack of the one before and costs no switch.
///
/// An exception other than WaitCancelled that leaves a conversation is thrown again out of the test's next wait. All
/// functions may be called only from the test, an event or a conversation.
class VirtualPauses : public Pauses {
public:
    /// `clock` must outlive this object. The constructing thread is the test.
    explicit VirtualPauses(VirtualClock& clock);
    ~VirtualPauses() override;

    void pause(Milliseconds how_long) override;
    bool wait_until(const std::function<bool()>& condition, std::optional<Milliseconds> limit = std::nullopt) override;
    void start(std::function<void()> work) override;
    void cancel_all() override;
    void hold_unhurried() override;
    void release_unhurried() override;

    /// Scripts an event. It runs as a conversation: it may wait. A moment that has passed means now.
    void at(Instant when, std::function<void()> event);
    void after(MonotonicClock::duration delay, std::function<void()> event);

    /// Like pause(), to an instant.
    void pause_until(Instant when);

    /// Something that knows by itself when it wants to run, as the Engine does: `when` is asked before every step, and
    /// at that instant `wake` runs as a conversation.
    void set_wake_source(std::function<std::optional<Instant>()> when, std::function<void()> wake);

    /// Scripted events that have not happened yet.
    [[nodiscard]] std::size_t scripted() const;
    /// Conversations that stand in a wait, the test not counted.
    [[nodiscard]] std::size_t waiting() const { return waiting_; }
    /// True once cancel_all() was called.
    [[nodiscard]] bool cancelled() const { return cancelled_; }

    /// Ends every conversation where it stands: its waits throw WaitCancelled, Unhurried or not, until it has unwound.
    /// Called by the destructor; call it earlier when conversations refer to things that go before.
    void end_all();

private:
    struct Strand;

    /// The order of what happens: by time, then the test's own waits last, then as made.
    struct Turn {
        Instant due;
        bool last = false;
        std::uint64_t made = 0;
        bool operator<(const Turn& other) const {
            return std::tie(due, last, made) < std::tie(other.due, other.last, other.made);
        }
    };
    struct Item {
        std::function<void()> event;  // to be run, or
        Strand* waiter = nullptr;     // to be gone on with
    };
    enum class Next { waiter, event, wake };

    void refuse_if_cancelled() const;
    bool wait(Instant due, bool last, const std::function<bool()>* condition, Instant limit);
    void enqueue_wait(Strand& strand, Instant due);
    bool poll(Strand& strand);
    Next find_next();
    Item take_front();
    Strand* new_strand();
    Strand& idle_strand();
    void hand_over(Strand& from, Strand& to);
    void pass_on(Strand& self);
    void lead(Strand& self);
    void run(Strand& self, const std::function<void()>& work);
    void rethrow_failure();

    VirtualClock& clock_;
    std::function<std::optional<Instant>()> wake_when_;
    std::function<void()> wake_;

    std::map<Turn, Item> queue_;
    std::uint64_t made_ = 0;
    std::size_t waiting_ = 0;
    bool cancelled_ = false;
    bool ending_ = false;
    std::exception_ptr failure_;

    std::mutex baton_;  // guards only the hand-over; whoever holds the baton owns everything else
    std::vector<std::unique_ptr<Strand>> strands_;  // the first is the test
    std::vector<Strand*> idle_;
    Strand* running_;
};

}  // namespace nimbry::test
