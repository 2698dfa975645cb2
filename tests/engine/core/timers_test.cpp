#include "engine/core/timers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace nimbry {
namespace {

using namespace std::chrono_literals;

constexpr Instant begin{1h};

struct IntervalCase {
    TimerId id;
    const char* name;
    Milliseconds interval;
};

constexpr IntervalCase intervals[] = {
    {TimerId::TimComFail, "TimComFail", 60000ms},
    {TimerId::Timer2, "Timer2", 1500ms},
    {TimerId::TimAlarm, "TimAlarm", 27000ms},
    {TimerId::TimDisplay, "TimDisplay", 3900ms},
    {TimerId::TimerFTP, "TimerFTP", 10000ms},
    {TimerId::TimUI, "TimUI", 60000ms},
    {TimerId::GrFailTimer, "GrFailTimer", 10000ms},
    {TimerId::timWU, "timWU", 60000ms},
    {TimerId::TimLog, "TimLog", 60000ms},
    {TimerId::TimFTPTOT, "TimFTPTOT", 50000ms},
    {TimerId::Timer1, "Timer1", 4000ms},
};

TEST(Timers, EachTimerHasItsNameAndItsInterval) {
    static_assert(std::size(intervals) == timer_count);
    for (const IntervalCase& row : intervals) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Timers::name(row.id), row.name);
        EXPECT_EQ(Timers::interval(row.id), row.interval);
        Timers timers;
        timers.start(row.id, begin);
        EXPECT_EQ(timers.wake_at(), begin + row.interval);
    }
}

TEST(Timers, NoneRunsAtFirst) {
    Timers timers;
    for (const IntervalCase& row : intervals) EXPECT_FALSE(timers.running(row.id));
    EXPECT_EQ(timers.wake_at(), std::nullopt);
    EXPECT_EQ(timers.take_due(begin + 24h), std::nullopt);
}

TEST(Timers, ATickIsDueAfterOneWholeIntervalAndNotBefore) {
    Timers timers;
    timers.start(TimerId::Timer2, begin);
    EXPECT_EQ(timers.take_due(begin + 1499ms), std::nullopt);
    EXPECT_EQ(timers.take_due(begin + 1500ms), TimerId::Timer2);
    EXPECT_EQ(timers.take_due(begin + 1500ms), std::nullopt) << "a tick is taken once";
    EXPECT_TRUE(timers.running(TimerId::Timer2));
    EXPECT_EQ(timers.wake_at(), begin + 3000ms);
}

TEST(Timers, TicksMissedByASuspendedProcessAreNotMadeUp) {
    Timers timers;
    timers.start(TimerId::TimLog, begin);
    EXPECT_EQ(timers.take_due(begin + 10min + 5s), TimerId::TimLog);
    EXPECT_EQ(timers.take_due(begin + 10min + 5s), std::nullopt);
    EXPECT_EQ(timers.wake_at(), begin + 11min + 5s);
}

TEST(Timers, TheOneDueLongestComesFirst) {
    Timers timers;
    timers.start(TimerId::TimComFail, begin);
    timers.start(TimerId::TimLog, begin - 1s);
    EXPECT_EQ(timers.take_due(begin + 2min), TimerId::TimLog);
    EXPECT_EQ(timers.take_due(begin + 2min), TimerId::TimComFail);
}

TEST(Timers, OfThoseDueAtOneInstantTheFirstOfTheListComesFirstWhicheverWasStartedFirst) {
    // The list is the order in which the timers stand above.
    const TimerId sixty_seconds[] = {TimerId::TimComFail, TimerId::TimUI, TimerId::timWU, TimerId::TimLog};
    for (const bool backwards : {false, true}) {
        SCOPED_TRACE(backwards ? "the last was started first" : "the first was started first");
        Timers timers;
        std::vector<TimerId> order(std::begin(sixty_seconds), std::end(sixty_seconds));
        if (backwards) std::reverse(order.begin(), order.end());
        for (const TimerId id : order) timers.start(id, begin);
        for (const TimerId id : sixty_seconds) EXPECT_EQ(timers.take_due(begin + 60s), id);
        EXPECT_EQ(timers.take_due(begin + 60s), std::nullopt);
    }
}

TEST(Timers, StartBeginsTheIntervalAnewAndStartIfStoppedDoesNot) {
    Timers timers;
    timers.start(TimerId::TimerFTP, begin);
    timers.start_if_stopped(TimerId::TimerFTP, begin + 9s);
    EXPECT_EQ(timers.wake_at(), begin + 10s);
    timers.start(TimerId::TimerFTP, begin + 9s);
    EXPECT_EQ(timers.wake_at(), begin + 19s);
    timers.stop(TimerId::TimerFTP);
    EXPECT_FALSE(timers.running(TimerId::TimerFTP));
    timers.start_if_stopped(TimerId::TimerFTP, begin + 20s);
    EXPECT_EQ(timers.wake_at(), begin + 30s);
}

TEST(Timers, StopAllStopsEveryOne) {
    Timers timers;
    for (const IntervalCase& row : intervals) timers.start(row.id, begin);
    timers.stop_all();
    EXPECT_EQ(timers.wake_at(), std::nullopt);
}

}  // namespace
}  // namespace nimbry
