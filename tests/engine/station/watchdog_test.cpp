#include "engine/station/watchdog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

struct TickCase {
    const char* state;
    bool Rflagb, ccheckflagb;
    bool reports;
    bool ccheckflagb_after;
};

TEST(Watchdog, ActsByItsTwoFlags) {
    const TickCase cases[] = {
        {"no cycle yet, no byte lately", false, true, true, true},
        {"no cycle yet, bytes come", false, false, true, false},
        {"data has flowed, bytes came in this minute", true, false, false, true},
        {"data has flowed, no byte in this minute", true, true, true, true},
    };
    for (const TickCase& row : cases) {
        SCOPED_TRACE(row.state);
        StartedWorld world;
        world.state().comm.Rflagb = row.Rflagb;
        world.state().comm.ccheckflagb = row.ccheckflagb;
        world.act([&] { watch_for_silence(world.copy()); });
        EXPECT_EQ(world.notices.balloons.size(), row.reports ? 1u : 0u);
        EXPECT_EQ(world.state().comm.ccheckflagb, row.ccheckflagb_after);
    }
}

TEST(Watchdog, ReportsWithToneBalloonAndLine) {
    StartedWorld world;
    world.send_trains(1);
    world.journal.clear();
    world.act([&] { commfail(world.copy()); });
    ASSERT_EQ(world.notices.balloons.size(), 1u);
    const Balloon& balloon = world.notices.balloons[0].what;
    EXPECT_EQ(balloon.title, "Comms Error");
    EXPECT_EQ(balloon.icon, "!");
    EXPECT_EQ(balloon.anchor, "TxtWindChill");
    EXPECT_EQ(balloon.text,
              "No data is being received from the weather station\r\nor the data being received is faulty.");
    EXPECT_THAT(world.journal.lines(), ElementsAre("beep", "balloon Comms Error", "append nbyprog.log"));
    EXPECT_THAT(world.log(), ElementsAre("05 Oct 2026 14:00:02 Communications error - no data being received"));
}

TEST(Watchdog, WithoutAStationTimeItsLineBearsTheComputers) {
    StartedWorld world;  // its port was opened for good half a second after the start
    world.run_for(1min);
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:01:00 (Computer time) Communications error - no data being received"));
}

/// What can hold a tick off.
struct SkipCase {
    const char* why;
    void (*set)(WeatherState&);
};

TEST(Watchdog, ATickThatIsHeldOffChangesNothing) {
    const SkipCase cases[] = {
        {"a synchronisation", [](WeatherState& s) { s.network.syncing = true; }},
        {"a changeover", [](WeatherState& s) { s.comm.changebusy.set(); }},
        {"an upload", [](WeatherState& s) { s.publish.uloadftpbusy.set(); }},
        {"a mail", [](WeatherState& s) { s.publish.emailbusy.set(); }},
    };
    for (const SkipCase& row : cases) {
        SCOPED_TRACE(row.why);
        StartedWorld world;
        world.state().comm.Rflagb = true;
        row.set(world.state());
        world.act([&] { watch_for_silence(world.copy()); });
        EXPECT_FALSE(world.state().comm.ccheckflagb);
        EXPECT_TRUE(world.copy().timers.running(TimerId::TimComFail));
        world.state().comm.ccheckflagb = true;
        world.act([&] { watch_for_silence(world.copy()); });
        EXPECT_THAT(world.notices.balloons, IsEmpty());
    }
}

TEST(Watchdog, InAClientTheTimerStopsItself) {
    StartedWorld world;
    world.state().settings.fromnet = true;
    world.run_for(1min);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimComFail));
    EXPECT_THAT(world.notices.balloons, IsEmpty());
}

struct SilenceCase {
    const char* what;
    Milliseconds last_byte_after_tick;
    Milliseconds silence_until_report;
};

TEST(Watchdog, AReportTakesSixtyToAHundredAndTwentySecondsOfSilence) {
    const SilenceCase cases[] = {
        {"the last byte came just after a tick", 100ms, 119900ms},
        {"the last byte came just before a tick", 59900ms, 60100ms},
    };
    for (const SilenceCase& row : cases) {
        SCOPED_TRACE(row.what);
        World world;
        world.files.put("Nimbry.ini", main_section());
        const Instant begin = world.clock.monotonic();
        world.begin_start();
        const Instant tick = begin + 500ms + 5min;
        world.pauses.pause_until(begin + 10s);
        while (world.clock.monotonic() < tick - 15s) world.send_trains(1);
        const Instant last_byte = tick + row.last_byte_after_tick;
        // Bytes every second keep the watch content up to the last one, whatever they are.
        while (world.clock.monotonic() < last_byte) {
            world.pauses.pause_until(std::min(world.clock.monotonic() + 1s, last_byte));
            world.send({0});
            world.run_for(0s);
        }
        EXPECT_THAT(world.notices.balloons, IsEmpty());
        world.pauses.pause_until(last_byte + row.silence_until_report - 1ms);
        EXPECT_THAT(world.notices.balloons, IsEmpty());
        world.run_for(1ms);
        EXPECT_EQ(world.notices.balloons.size(), 1u);
        world.run_for(3min);
        EXPECT_EQ(world.notices.balloons.size(), 4u) << "each minute while the silence lasts";
        world.send({0});
        world.run_for(1min);
        EXPECT_EQ(world.notices.balloons.size(), 4u) << "any byte ends it";
    }
}

TEST(Watchdog, BadFramesBeforeTheFirstTrainAreReportedEachMinuteAndLaterAreNot) {
    StartedWorld world;
    Bytes bad = write_train({});
    spoil_checksum(bad, 0xBF);
    const auto five_minutes_of_bad_trains = [&] {
        for (int i = 0; i < 30; ++i) {
            world.deliver(bad);
            world.run_for(9900ms);
        }
    };
    five_minutes_of_bad_trains();
    EXPECT_EQ(world.notices.balloons.size(), 5u);
    world.send_trains(1);
    world.notices.balloons.clear();
    five_minutes_of_bad_trains();
    EXPECT_THAT(world.notices.balloons, IsEmpty());
}

}  // namespace
}  // namespace nimbry::test
