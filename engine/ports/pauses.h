#pragma once

#include <functional>
#include <optional>

#include "engine/ports/clock.h"

namespace nimbry {

/// Thrown out of a wait when the program is closing. It unwinds the conversation that was waiting, and only the
/// place that started the conversation catches it; guards on the way let their flags go.
struct WaitCancelled {};

/// Waiting, for code that reads top to bottom. A call suspends the conversation it is made from; meanwhile other
/// events run (they may change any state), and the call returns on the same thread.
///
/// Never wait inside a catch block: note what was caught, leave the block, and wait then. The language keeps one pile
/// of caught exceptions for all conversations.
///
/// Every event of the engine runs as a conversation, so any routine may wait. In the programs a conversation is a
/// fiber of the event loop; in tests the wait moves a virtual clock forward and lets scripted events happen.
class Pauses {
public:
    virtual ~Pauses() = default;

    /// Lets `how_long` pass (zero: lets the events that are due run once). Throws WaitCancelled after cancel_all().
    virtual void pause(Milliseconds how_long) = 0;

    /// Waits until `condition` holds, looking at it again after each short interval (1 ms of virtual time, 20 ms of
    /// real time). Returns true when it holds, at once if it does already; false when `limit` ran out first (no limit:
    /// never). Throws WaitCancelled after cancel_all().
    virtual bool wait_until(const std::function<bool()>& condition,
                            std::optional<Milliseconds> limit = std::nullopt) = 0;

    /// Starts `work` as a conversation of its own. It runs at once, up to its first wait, before start() returns.
    /// WaitCancelled ends it silently; no other exception may leave it.
    virtual void start(std::function<void()> work) = 0;

    /// From here on every wait, standing or new, ends with WaitCancelled, except in a conversation that holds an
    /// Unhurried. Called once, when the program begins to close.
    virtual void cancel_all() = 0;

    /// Marks the running conversation as one that may go on waiting after cancel_all(): the exit itself and the saves
    /// it waits for. Held by Unhurried.
    virtual void hold_unhurried() = 0;
    virtual void release_unhurried() = 0;
};

/// Holds the running conversation's right to finish its waits although the program closes.
class Unhurried {
public:
    explicit Unhurried(Pauses& pauses) : pauses_(pauses) { pauses_.hold_unhurried(); }
    ~Unhurried() { pauses_.release_unhurried(); }
    Unhurried(const Unhurried&) = delete;
    Unhurried& operator=(const Unhurried&) = delete;

private:
    Pauses& pauses_;
};

}  // namespace nimbry
