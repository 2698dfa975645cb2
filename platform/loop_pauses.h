#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "engine/ports/pauses.h"
#include "platform/fibers.h"

namespace nimbry::platform {

/// Waiting in the programs: each conversation is a fiber, a wait suspends it, and one precise timer of the Qt event
/// loop goes on with it. Conversations are resumed from that timer's event only, in the order in which they are due.
class LoopPauses : public QObject, public Pauses {
public:
    /// How often wait_until() looks at its condition.
    static constexpr Milliseconds look_again{20};

    /// `clock` must outlive this object. Needs the QCoreApplication.
    explicit LoopPauses(const Clock& clock);

    void pause(Milliseconds how_long) override;
    bool wait_until(const std::function<bool()>& condition, std::optional<Milliseconds> limit = std::nullopt) override;
    void start(std::function<void()> work) override;
    void cancel_all() override;
    void hold_unhurried() override;
    void release_unhurried() override;

    /// Ends what still waits, the unhurried too, for a program that has left its event loop: every wait throws
    /// WaitCancelled, and the conversations have unwound when this returns. To be called while what they refer to still
    /// stands.
    void finish();

    /// `settled` is called on the main stack each time after a conversation has ended or begun to wait: whatever it
    /// changed is then in place. One listener.
    void on_settled(std::function<void()> settled) { settled_ = std::move(settled); }

    /// Lets every wait_until() look at its condition in the loop's next round: for whoever knows that something has
    /// come about. A hint, no more; each looks by itself soon.
    void look_now();

    /// Conversations that wait now.
    [[nodiscard]] std::size_t waiting() const { return waits_.size(); }

private:
    struct Wait {
        Fiber* fiber;
        Instant due;
        bool looks;           ///< it waits for a condition, and may be woken for a look at any time
        std::uint64_t order;  ///< of the waits with the same due time the earlier one comes first
    };

    void suspend_until(Instant due, bool looks);
    void bring_forward(const std::function<bool(const Wait&)>& which);
    void throw_if_cancelled();
    [[nodiscard]] bool cancels(Fiber* fiber) const;
    void resume_due();
    void resume(std::vector<Wait>::iterator wait);
    void arm();
    void settle();

    const Clock& clock_;
    Fibers fibers_;
    QTimer timer_;
    std::vector<Wait> waits_;  ///< sorted by due time, then by order
    std::map<Fiber*, int> unhurried_;
    std::function<void()> settled_;
    std::uint64_t next_order_ = 0;
    bool cancelled_ = false;
    bool finished_ = false;
};

}  // namespace nimbry::platform
