#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/records/extremes.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

CivilTime at(int hour, int minute, int second, int day = 5) {
    return *civil_time({2026, 10, day, hour, minute, second});
}

// The order of a cycle, as the outside sees it.

std::vector<std::string> without_repeats(const std::vector<std::string>& lines) {
    std::vector<std::string> once;
    for (const std::string& line : lines)
        if (once.empty() || once.back() != line) once.push_back(line);
    return once;
}

TEST(CycleSteps, ClocksAreTestedFirstThenTheRecordsAndThenComesTheSave) {
    StartedWorld world;
    world.send_train({}, at(23, 59, 30));
    world.send_train({}, at(23, 59, 40));
    world.state().run.SaveCounter = 29;
    world.files.put("rnslm.dat", "");
    world.journal.clear();
    world.send_train({}, at(0, 0, 0, 6));  // the computer's clock says 14:00
    const std::vector<std::string> lines = without_repeats(world.journal.lines());
    const auto place = [&](std::string_view begin) {
        std::size_t n = 0;
        while (n < lines.size() && !lines[n].starts_with(begin)) ++n;
        return n;
    };
    const std::size_t balloon = place("balloon Clock Error");
    const std::size_t midnight = place("append rnslm.dat");
    ASSERT_LT(midnight, lines.size());
    EXPECT_LT(balloon, midnight);
    for (std::size_t n = 0; n < lines.size(); ++n) {
        if (lines[n].find("nimbrTDay") != std::string::npos) {
            EXPECT_GT(n, midnight) << lines[n];
        }
    }
    EXPECT_EQ(world.state().run.SaveRounds, 1) << "the save was due in this cycle";
}

// Once in a visit of the station's clock to the seconds 30 to 39, the last hour's rain goes on.

struct Visit {
    const char* what;
    std::vector<int> seconds;
    int ticks;
};

TEST(GraphTick, ComesOnceInEachVisitToTheSecondsThirtyToThirtyNine) {
    for (const Visit& c : {
             Visit{"just before", {29}, 0},
             Visit{"the first second", {29, 30}, 1},
             Visit{"the last second", {29, 39}, 1},
             Visit{"just after", {29, 40}, 0},
             Visit{"twice in one visit", {29, 30, 39, 40}, 1},
             Visit{"two visits", {30, 40, 30}, 2},
             Visit{"a visit left forwards and entered again", {35, 0, 35}, 2},
             Visit{"two minutes' trains that both meet it: it was never left", {35, 35}, 1},
         }) {
        SCOPED_TRACE(c.what);
        StartedWorld world;
        world.send_train({}, at(14, 0, 0));
        world.send_train({}, at(14, 0, 10));
        RainState& rain = world.state().rain;
        ASSERT_EQ(rain.LastHourIndex, 0);
        int minute = 1;
        for (const int second : c.seconds) world.send_train({}, at(14, minute++, second));
        EXPECT_EQ(rain.LastHourIndex, c.ticks);
    }
}

TEST(GraphTick, IsNotAskedForInTheFirstCycle) {
    StartedWorld world;
    world.send_train({}, at(14, 0, 35));
    EXPECT_EQ(world.state().rain.LastHourIndex, 0);
    world.send_train({}, at(14, 0, 38));
    EXPECT_EQ(world.state().rain.LastHourIndex, 1);
}

// The midnight file, and the rain of a day with a faulty sensor

TEST(MidnightInTheCycle, IsWrittenByAServerAndByAClient) {
    for (const bool client : {false, true}) {
        SCOPED_TRACE(client ? "client" : "server");
        StartedWorld world(client ? "fromnet=True\r\n" : "");
        cycle(world);
        Readings& readings = world.state().readings;
        readings.dtvar = at(0, 0, 20, 6);
        readings.rdattime = "00:00:20";
        readings.rdattotrain = "0123";
        cycle(world);
        EXPECT_THAT(world.lines("rnslm.dat"), ElementsAre("06 Oct 2026 00:00:20", "123"));
    }
}

TEST(RainOfTheDayInTheCycle, FollowsTheCounterOfAFaultySensorToo) {
    StartedWorld world;
    world.send_trains(2);
    StationReadings broken;
    broken.rain = {.rate_mm = 0, .total_mm = 130, .fault = true};
    world.send_trains(2, broken);
    EXPECT_EQ(world.panel().TxtRainToday.text, " 7 mm");
}

}  // namespace
}  // namespace nimbry::test
