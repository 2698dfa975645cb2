#include "platform/loop_pauses.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/system_clock.h"
#include "tests/platform/event_loop.h"

namespace nimbry::platform {
namespace {

using namespace std::chrono_literals;

/// The system's clock, which the test may hold still: what is begun one after the other then begins at one moment.
class HoldableClock : public SystemClock {
public:
    [[nodiscard]] Instant monotonic() const override { return held_at_.value_or(SystemClock::monotonic()); }
    void hold_still() { held_at_ = SystemClock::monotonic(); }
    void go_on() { held_at_.reset(); }

private:
    std::optional<Instant> held_at_;
};

class LoopPausesTest : public testing::Test {
protected:
    void let_all_end() {
        ASSERT_TRUE(run_events_until([this] { return pauses.waiting() == 0; }));
    }

    HoldableClock clock;
    LoopPauses pauses{clock};
    std::string order;
};

TEST_F(LoopPausesTest, AConversationRunsAtOnceUpToItsFirstWait) {
    pauses.start([&] {
        order += "begun ";
        pauses.pause(1ms);
        order += "ended ";
    });
    order += "started ";
    let_all_end();
    EXPECT_EQ(order, "begun started ended ");
}

TEST_F(LoopPausesTest, AWaitLastsAtLeastAsLongAsItSays) {
    Instant ended{};
    const Instant begun = clock.monotonic();
    pauses.start([&] {
        pauses.pause(30ms);
        ended = clock.monotonic();
    });
    let_all_end();
    EXPECT_GE(ended - begun, 30ms);
}

TEST_F(LoopPausesTest, OverlappingWaitsEndInTheOrderOfTheirTimes) {
    const auto wait = [&](const std::string& name, Milliseconds how_long) {
        pauses.start([this, name, how_long] {
            pauses.pause(how_long);
            order += name + " ";
        });
    };
    clock.hold_still();
    wait("long", 60ms);
    wait("short", 5ms);
    wait("middle", 30ms);
    EXPECT_EQ(pauses.waiting(), 3U);
    clock.go_on();
    let_all_end();
    EXPECT_EQ(order, "short middle long ");
}

TEST_F(LoopPausesTest, WaitsOfTheSameTimeEndInTheOrderOfTheirBeginning) {
    for (const char* name : {"a ", "b ", "c "}) {
        pauses.start([this, name] {
            pauses.pause(0ms);
            order += name;
        });
    }
    let_all_end();
    EXPECT_EQ(order, "a b c ");
}

TEST_F(LoopPausesTest, APauseOfNoTimeLetsPendingEventsRun) {
    bool event_ran = false;
    bool seen = false;
    QMetaObject::invokeMethod(
        &pauses, [&] { event_ran = true; }, Qt::QueuedConnection);
    pauses.start([&] {
        pauses.pause(0ms);
        seen = event_ran;
    });
    let_all_end();
    EXPECT_TRUE(seen);
}

TEST_F(LoopPausesTest, PausesOfNoTimeDoNotKeepSocketsFromTheirEvents) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    bool told = false;
    QSocketNotifier notifier(ends[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
        told = true;
        notifier.setEnabled(false);
    });
    bool stop = false;
    pauses.start([&] {
        while (!stop) pauses.pause(0ms);
    });
    EXPECT_TRUE(run_events_until([&] { return told; }));
    stop = true;
    let_all_end();
    close(ends[0]);
    close(ends[1]);
}

TEST_F(LoopPausesTest, ACertainConditionIsNotWaitedFor) {
    pauses.start([&] {
        EXPECT_TRUE(pauses.wait_until([] { return true; }));
        EXPECT_TRUE(pauses.wait_until([] { return true; }, 0ms));
        order += "done";
    });
    EXPECT_EQ(order, "done");
}

TEST_F(LoopPausesTest, AWaitForAConditionEndsOnceItHolds) {
    bool holds = false;
    pauses.start([&] { order += pauses.wait_until([&] { return holds; }) ? "held" : "ran out"; });
    pauses.start([&] {
        pauses.pause(30ms);
        holds = true;
    });
    let_all_end();
    EXPECT_EQ(order, "held");
}

TEST_F(LoopPausesTest, AWaitForAConditionGivesUpAtItsLimit) {
    const Instant begun = clock.monotonic();
    pauses.start([&] { order += pauses.wait_until([] { return false; }, 30ms) ? "held" : "ran out"; });
    let_all_end();
    EXPECT_EQ(order, "ran out");
    EXPECT_GE(clock.monotonic() - begun, 30ms);
}

TEST_F(LoopPausesTest, TheConditionIsLookedAtOnceMoreWhenTheLimitIsReached) {
    int looks = 0;
    pauses.start([&] { order += pauses.wait_until([&] { return ++looks == 2; }, 1ms) ? "held" : "ran out"; });
    let_all_end();
    EXPECT_EQ(order, "held");
}

TEST_F(LoopPausesTest, ClosingEndsEveryStandingWaitAndUnwindsItsConversation) {
    struct Guard {
        std::string& order;
        ~Guard() { order += "unwound "; }
    };
    pauses.start([&] {
        const Guard guard{order};
        pauses.pause(1h);
        order += "never ";
    });
    pauses.start([&] {
        const Guard guard{order};
        pauses.wait_until([] { return false; });
        order += "never ";
    });
    pauses.cancel_all();
    order += "asked ";
    let_all_end();
    EXPECT_EQ(order, "asked unwound unwound ");
}

TEST_F(LoopPausesTest, AfterClosingANewWaitEndsAtOnce) {
    pauses.cancel_all();
    pauses.start([&] {
        order += "begun ";
        pauses.pause(1h);
        order += "never ";
    });
    EXPECT_EQ(pauses.waiting(), 0U);
    EXPECT_EQ(order, "begun ");
}

TEST_F(LoopPausesTest, AConversationMayCloseTheProgramItself) {
    pauses.start([&] {
        pauses.cancel_all();
        order += "closed ";
        pauses.pause(1ms);
        order += "never ";
    });
    EXPECT_EQ(order, "closed ");
}

TEST_F(LoopPausesTest, AnUnhurriedConversationFinishesItsWaitsAlthoughTheProgramCloses) {
    pauses.start([&] {
        const Unhurried unhurried(pauses);
        pauses.pause(20ms);
        order += "first ";
        pauses.pause(20ms);
        order += "second ";
    });
    pauses.cancel_all();
    let_all_end();
    EXPECT_EQ(order, "first second ");
}

TEST_F(LoopPausesTest, BeingUnhurriedEndsWithItsHolder) {
    pauses.start([&] {
        {
            const Unhurried outer(pauses);
            const Unhurried inner(pauses);
        }
        pauses.pause(1h);
        order += "never ";
    });
    pauses.cancel_all();
    let_all_end();
    EXPECT_EQ(order, "");
}

TEST_F(LoopPausesTest, BeingUnhurriedDoesNotPassToAConversationThatIsStarted) {
    pauses.start([&] {
        const Unhurried unhurried(pauses);
        pauses.start([&] {
            pauses.pause(1h);
            order += "never ";
        });
        pauses.pause(5ms);
        order += "finished ";
    });
    pauses.cancel_all();
    let_all_end();
    EXPECT_EQ(order, "finished ");
}

// The stack of an ended conversation is used again: its rights must not be.
TEST_F(LoopPausesTest, BeingUnhurriedDoesNotPassToTheNextConversationOnTheSameStack) {
    pauses.start([&] { pauses.hold_unhurried(); });
    pauses.cancel_all();
    pauses.start([&] {
        pauses.pause(1h);
        order += "never ";
    });
    EXPECT_EQ(pauses.waiting(), 0U);
    EXPECT_EQ(order, "");
}

TEST_F(LoopPausesTest, FinishingEndsTheUnhurriedToo) {
    pauses.start([&] {
        const Unhurried unhurried(pauses);
        try {
            pauses.pause(1h);
        } catch (const WaitCancelled&) {
            order += "ended ";
            throw;
        }
    });
    pauses.finish();
    EXPECT_EQ(order, "ended ");
    EXPECT_EQ(pauses.waiting(), 0U);
}

TEST_F(LoopPausesTest, AnErrorAfterAWaitIsCaughtInItsConversation) {
    pauses.start([&] {
        try {
            pauses.pause(1ms);
            throw std::runtime_error("late");
        } catch (const std::runtime_error& error) {
            pauses.pause(1ms);
            order += error.what();
        }
    });
    let_all_end();
    EXPECT_EQ(order, "late");
}

TEST_F(LoopPausesTest, TheListenerHearsOnTheMainStackAfterEachStretch) {
    int settled = 0;
    pauses.on_settled([&] { ++settled; });
    pauses.start([&] {
        pauses.start([] {});  // inside another: the main stack is not reached in between
        pauses.pause(1ms);
    });
    EXPECT_EQ(settled, 1);
    let_all_end();
    EXPECT_EQ(settled, 2);
}

TEST_F(LoopPausesTest, AWaitOutsideAConversationIsRefused) {
    EXPECT_THROW(pauses.pause(1ms), std::logic_error);
    EXPECT_EQ(pauses.waiting(), 0U);
}

TEST_F(LoopPausesTest, WhoWaitsForAConditionCanBeSentToLookAtOnce) {
    bool come = false;
    pauses.start([&] {
        pauses.wait_until([&] { return come; });
        order += "seen ";
    });
    pauses.start([&] {
        pauses.pause(1h);
        order += "later ";
    });
    come = true;
    pauses.look_now();
    run_pending_events();
    EXPECT_EQ(order, "seen ");
    EXPECT_EQ(pauses.waiting(), 1U);
    pauses.finish();
}

}  // namespace
}  // namespace nimbry::platform
