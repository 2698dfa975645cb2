#include "tests/world/virtual_pauses.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

class VirtualPausesTest : public testing::Test {
protected:
    VirtualClock clock;
    VirtualPauses pauses{clock};
    Instant begin = clock.monotonic();
    std::vector<std::string> log;

    /// Writes a line with the seconds (to the millisecond) since the test began.
    void note(const std::string& what) {
        const auto ms = std::chrono::duration_cast<Milliseconds>(clock.monotonic() - begin).count();
        log.push_back(std::to_string(ms) + " " + what);
    }
};

TEST_F(VirtualPausesTest, TwoLongWaitsOverlapAndEndInTheOrderOfTime) {
    pauses.start([&] {
        note("slow starts");
        pauses.pause(20s);
        note("slow ends");
    });
    pauses.start([&] {
        note("fast starts");
        pauses.pause(5s);
        note("fast goes on");
        pauses.pause(5s);
        note("fast ends");
    });
    note("test goes on");
    pauses.pause(1min);
    EXPECT_EQ(log, (std::vector<std::string>{"0 slow starts", "0 fast starts", "0 test goes on", "5000 fast goes on",
                                             "10000 fast ends", "20000 slow ends"}));
    EXPECT_EQ(clock.monotonic() - begin, 1min);
    EXPECT_EQ(pauses.waiting(), 0u);
}

TEST_F(VirtualPausesTest, AScriptedEventMayWaitWhileLaterEventsHappen) {
    pauses.after(1s, [&] {
        note("first");
        pauses.pause(3s);
        note("first again");
    });
    pauses.after(2s, [&] { note("second"); });
    pauses.pause(10s);
    EXPECT_EQ(log, (std::vector<std::string>{"1000 first", "2000 second", "4000 first again"}));
}

TEST_F(VirtualPausesTest, WhatIsDueAtOneInstantHappensInTheOrderInWhichItWasMadeAndTheTestComesLast) {
    pauses.start([&] {
        pauses.pause(1s);
        note("waited");
    });
    pauses.after(1s, [&] { note("scripted"); });
    pauses.after(500ms, [&] { pauses.after(500ms, [&] { note("scripted later"); }); });
    pauses.pause(1s);
    note("test");
    EXPECT_EQ(log, (std::vector<std::string>{"1000 waited", "1000 scripted", "1000 scripted later", "1000 test"}));
}

TEST_F(VirtualPausesTest, StartRunsTheWorkUpToItsFirstWaitBeforeItReturns) {
    pauses.start([&] {
        note("outer");
        pauses.start([&] {
            note("inner");
            pauses.pause(1ms);
            note("inner again");
        });
        note("outer again");
    });
    note("test");
    pauses.pause(1ms);
    EXPECT_EQ(log, (std::vector<std::string>{"0 outer", "0 inner", "0 outer again", "0 test", "1 inner again"}));
}

TEST_F(VirtualPausesTest, AConditionIsLookedAtEachMillisecond) {
    bool ready = false;
    pauses.after(2500us, [&] { ready = true; });
    EXPECT_TRUE(pauses.wait_until([&] { return ready; }));
    EXPECT_EQ(clock.monotonic() - begin, 3ms);
}

TEST_F(VirtualPausesTest, AConditionThatHoldsTakesNoTime) {
    EXPECT_TRUE(pauses.wait_until([] { return true; }, 0ms));
    EXPECT_EQ(clock.monotonic(), begin);
}

TEST_F(VirtualPausesTest, AWaitWithALimitEndsAtTheLimit) {
    EXPECT_FALSE(pauses.wait_until([] { return false; }, 2500ms));
    EXPECT_EQ(clock.monotonic() - begin, 2500ms);
    EXPECT_FALSE(pauses.wait_until([] { return false; }, 0ms));
    EXPECT_EQ(clock.monotonic() - begin, 2500ms);
}

TEST_F(VirtualPausesTest, APauseOfNoLengthLetsEverythingRunThatIsDue) {
    pauses.at(begin, [&] { note("event"); });
    pauses.after(1us, [&] { note("not yet due"); });
    pauses.pause(0ms);
    note("test");
    EXPECT_EQ(log, (std::vector<std::string>{"0 event", "0 test"}));
}

TEST_F(VirtualPausesTest, CancellationEndsStandingAndNewWaits) {
    pauses.start([&] {
        try {
            pauses.pause(1h);
        } catch (const WaitCancelled&) {
            note("standing wait cancelled");
            throw;
        }
        note("never");
    });
    pauses.after(1s, [&] {
        pauses.cancel_all();
        note("cancelled all");
        try {
            pauses.pause(1ms);
        } catch (const WaitCancelled&) {
            note("new wait cancelled");
            throw;
        }
    });
    pauses.pause(2s);
    EXPECT_EQ(log, (std::vector<std::string>{"1000 cancelled all", "1000 new wait cancelled",
                                             "1000 standing wait cancelled"}));
    EXPECT_EQ(clock.monotonic() - begin, 2s) << "the test's own waits go on";
}

TEST_F(VirtualPausesTest, AnUnhurriedConversationWaitsOnAfterCancellation) {
    pauses.start([&] {
        const Unhurried unhurried(pauses);
        pauses.cancel_all();
        pauses.pause(1s);
        note("saved");
        EXPECT_TRUE(pauses.wait_until([] { return true; }));
    });
    pauses.start([&] {
        const Unhurried unhurried(pauses);
        pauses.pause(2s);
        note("saved too");
    });
    pauses.pause(5s);
    EXPECT_EQ(log, (std::vector<std::string>{"1000 saved", "2000 saved too"}));
}

TEST_F(VirtualPausesTest, TheRightToWaitOnEndsWithItsConversation) {
    pauses.start([&] {
        { const Unhurried unhurried(pauses); }
        pauses.cancel_all();
        EXPECT_THROW(pauses.pause(1s), WaitCancelled);
        note("cancelled");
    });
    EXPECT_EQ(log, (std::vector<std::string>{"0 cancelled"}));
}

TEST_F(VirtualPausesTest, TheWakeSourceRunsAtItsInstantAfterScriptedEventsAndBeforeTheTest) {
    std::optional<Instant> due = begin + 1s;
    pauses.set_wake_source([&] { return due; },
                           [&] {
                               note("wake");
                               due = clock.monotonic() + 1s;
                               pauses.pause(10ms);
                               note("woken");
                           });
    pauses.after(1s, [&] { note("event"); });
    pauses.pause(2s);
    note("test");
    EXPECT_EQ(log, (std::vector<std::string>{"1000 event", "1000 wake", "1010 woken", "2000 wake", "2000 test"}));
}

TEST_F(VirtualPausesTest, AnExceptionThatLeavesAConversationReachesTheTest) {
    pauses.after(1s, [] { throw std::runtime_error("broken"); });
    EXPECT_THROW(pauses.pause(2s), std::runtime_error);
    EXPECT_THROW(pauses.start([] { throw std::runtime_error("broken"); }), std::runtime_error);
    pauses.pause(1s);
}

TEST_F(VirtualPausesTest, AConditionThatThrowsEndsItsOwnWait) {
    pauses.start([&] {
        int looks = 0;
        EXPECT_THROW(pauses.wait_until([&]() -> bool {
            if (++looks == 3) throw std::runtime_error("broken");
            return false;
        }),
                     std::runtime_error);
        note("condition threw");
    });
    pauses.pause(10ms);
    EXPECT_EQ(log, (std::vector<std::string>{"2 condition threw"}));
}

TEST_F(VirtualPausesTest, ConversationsThatStillWaitAtTheEndAreUnwound) {
    bool unwound = false;
    struct Guard {
        bool& flag;
        ~Guard() { flag = true; }
    };
    {
        VirtualPauses own(clock);
        own.start([&] {
            const Guard guard{unwound};
            const Unhurried unhurried(own);
            own.pause(1h);
        });
        EXPECT_FALSE(unwound);
    }
    EXPECT_TRUE(unwound);
}

/// A thousand conversations with waits of their own; returns what happened, in order.
std::string crowd() {
    VirtualClock clock;
    VirtualPauses pauses(clock);
    std::string story;
    for (int i = 0; i < 100; ++i) {
        pauses.start([&, i] {
            for (int round = 0; round < 10; ++round) {
                pauses.pause(Milliseconds{(i * 37 + round * 11) % 50});
                story += std::to_string(i) + ' ';
            }
        });
    }
    pauses.pause(10s);
    return story;
}

TEST(VirtualPausesCrowd, TheOrderIsTheSameInEveryRun) {
    const std::string once = crowd();
    EXPECT_EQ(std::count(once.begin(), once.end(), ' '), 1000);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(crowd(), once);
}

TEST(VirtualPausesCrowd, ADayOfPollingAndTimersPassesAtOnce) {
    VirtualClock clock;
    VirtualPauses pauses(clock);
    bool ready = false;
    int ticks = 0;
    pauses.start([&] { pauses.wait_until([&] { return ready; }); });
    std::function<void()> tick = [&] {
        ++ticks;
        pauses.after(1s, tick);
    };
    pauses.after(1s, tick);
    pauses.pause(10min);
    ready = true;
    pauses.pause(24h);
    EXPECT_EQ(ticks, 600 + 86400);
    EXPECT_EQ(pauses.waiting(), 0u);
}

}  // namespace
}  // namespace nimbry::test
