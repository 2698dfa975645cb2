#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/engine/graphs/sampling.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

TEST(GraphSample, TakesEachSeriesFromTheBoxOfItsNumber) {
    Sampling world;
    world.sample();
    const float expected[] = {12.3F, 3.3F, 54, 11.2F, 1013, 2.5F, 18.4F, 225, 21.5F, 45};
    for (int s = 0; s < series::count; ++s) EXPECT_EQ(world.last(s), expected[s]) << s;
    EXPECT_EQ(world.rows.windsamples(), 1);
}

TEST(GraphSample, BearsTheStationsTime) {
    Sampling world;
    world.sample();
    EXPECT_EQ(world.rows.gtime(1), "05 Oct 2026 14:02:33");
    world.state.readings.dtvar = *civil_time({2027, 1, 9, 0, 0, 5});
    world.sample();
    EXPECT_EQ(world.rows.gtime(2), "09 Jan 2027 00:00:05") << "two digits of the day, twenty characters";
}

TEST(GraphSample, PutsTheStoreInUse) {
    Sampling world;
    EXPECT_FALSE(world.state.havegrafdata);
    world.sample();
    EXPECT_TRUE(world.state.havegrafdata);
}

TEST(GraphSample, EndsTheMinutesGust) {
    Sampling world;
    world.sample();
    EXPECT_EQ(world.state.graphs.webpeakgust, 18.4);
    EXPECT_EQ(world.state.readings.wstempsng, 0);
}

struct BoxCase {
    const char* law;
    int s;
    const char* text;
    float first, after;  ///< the sample in an empty store, and behind the plain afternoon's
};

TEST(GraphSample, ReadsABoxAsItCan) {
    const BoxCase cases[] = {
        {"a sign", 0, "-4.7 \260C", -4.7F, -4.7F},
        {"a sign and zero", 0, "-0 \260C", 0, 0},
        {"a faulty reading repeats the last one", 0, "Error", 0, 12.3F},
        {"with blanks around it too", 2, " Error ", 0, 54},
        {"a calm average is 0", 3, "Calm", 0, 0},
        {"a calm with blanks", 3, " Calm ", 0, 0},
        {"an empty box is 0", 5, "", 0, 0},
        {"what cannot be read is 0", 5, "??", 0, 0},
        {"at its least value it is stored", 4, " 794 mB", 794, 794},
        {"at its greatest too", 4, " 1051 mB", 1051, 1051},
        {"below, the last one stands in", 4, " 793 mB", 0, 1013},
        {"above too", 4, " 1052 mB", 0, 1013},
        {"an empty barometer", 4, "", 0, 1013},
        {"humidity of 0 and 100 is within", 2, "0 %", 0, 0},
        {"and the other end", 2, "100 %", 100, 100},
        {"no more", 2, "101 %", 0, 54},
        {"a direction from its sixth character", 7, "Gust 9\xB0", 9, 9},
        {"north is 360", 7, "Gust 0\xB0", 360, 360},
        {"360 is north too", 7, "Gust 360\xB0", 360, 360},
        {"a direction that cannot be read is 360", 7, "Gust ?", 360, 360},
        {"a text too short for one as well", 7, "x", 360, 360},
        {"a faulty direction repeats the last one", 7, "Error", 0, 225},
        {"a calm direction is 0", 7, "Calm", 0, 0},
        {"beyond the circle the last one stands in", 7, "Gust 999\xB0", 0, 225},
        {"a calm gust is 0 whatever was held", 6, "Calm", 0, 0},
        {"a faulty gust repeats the last one", 6, "Error", 0, 18.4F},
    };
    for (const BoxCase& c : cases) {
        SCOPED_TRACE(c.law);
        Sampling first;
        first.box(c.s, c.text);
        first.sample();
        EXPECT_EQ(first.last(c.s), c.first);
        Sampling after;
        after.sample();
        after.box(c.s, c.text);
        after.state.readings.wstempsng = 30;
        after.sample();
        EXPECT_EQ(after.last(c.s), c.after);
    }
}

TEST(GraphSample, ACalmGustMakesTheDirection0) {
    for (const char* gust : {"Calm", " Calm "}) {
        Sampling world;
        world.box(6, gust);
        world.sample();
        EXPECT_EQ(world.last(7), 0);
    }
}

TEST(GraphSample, ACalmHasNoDirectionAlsoWhenTheVaneIsAtFault) {
    Sampling world;
    world.sample();
    world.box(7, "Error");
    world.sample();
    EXPECT_EQ(world.last(7), 225) << "with a wind the last direction is repeated";
    world.box(6, "Calm");
    world.sample();
    EXPECT_EQ(world.last(7), 0);
}

TEST(GraphSample, TheHeldGustNeverSpansTwoMinutesWhateverTheBoxSays) {
    for (const char* text : {" 15.1 km/h", "Calm", "Error"}) {
        SCOPED_TRACE(text);
        Sampling world;
        world.box(6, text);
        world.sample();
        EXPECT_EQ(world.state.graphs.webpeakgust, 18.4);
        EXPECT_EQ(world.state.readings.wstempsng, 0);
        world.box(6, " 3 km/h");
        world.sample();
        EXPECT_EQ(world.last(6), 0);
        EXPECT_EQ(world.state.graphs.webpeakgust, 0);
    }
}

TEST(GraphSample, AddsOneRowToEverySeriesAlsoForValuesThatMayNotBeStored) {
    Sampling world;
    world.sample();
    for (int s = 0; s < series::count; ++s) world.box(s, s == 7 ? "Gust 999\xB0" : "9999");
    world.state.readings.wstempsng = 9999;
    world.sample();
    EXPECT_EQ(world.rows.windsamples(), 2);
    const float expected[] = {12.3F, 3.3F, 54, 11.2F, 1013, 2.5F, 18.4F, 225, 21.5F, 45};
    for (int s = 0; s < series::count; ++s) {
        EXPECT_EQ(world.rows.gdata(s, 0), 2) << s;
        EXPECT_EQ(world.last(s), expected[s]) << s;
    }
}

TEST(GraphSample, ScrollsAFullDay) {
    Sampling world;
    for (int n = 0; n < 1440; ++n) world.rows.append(GraphRow{});
    world.rows.row(2).set_gtime("second");
    world.sample();
    EXPECT_EQ(world.rows.windsamples(), 1440);
    EXPECT_EQ(world.rows.gtime(1), "second");
    EXPECT_EQ(world.rows.gtime(1440), "05 Oct 2026 14:02:33");
    EXPECT_EQ(world.last(2), 54);
}

TEST(GraphSample, IsNotTakenWhileAnotherOneIs) {
    Sampling world;
    {
        const auto busy = world.state.graphs.GrafBusy.try_hold();
        world.sample();
        EXPECT_EQ(world.rows.windsamples(), 0);
    }
    world.sample();
    EXPECT_EQ(world.rows.windsamples(), 1);
    EXPECT_FALSE(world.state.graphs.GrafBusy);
}

TEST(GraphSample, ClearsIntensity) {
    Sampling world;
    world.state.graphs.Intensity = 3;
    world.sample();
    EXPECT_EQ(world.state.graphs.Intensity, 0);
}

TEST(GraphSample, SavesFromTheSecondOnAndDrawsEachTime) {
    Sampling world;
    world.sample();
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(world.state.graphs.draws, 1);
    world.sample();
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(world.state.graphs.draws, 2);
    EXPECT_FALSE(world.state.run.savingrafs);
}

TEST(GraphSample, ASaveThatFailsIsLoggedUnderItsTagAndTheRestOfTheMinuteGoesOn) {
    Sampling world;
    world.sample();
    world.files.refuse("grafdata.dat", FileResult::permission);
    world.sample();
    EXPECT_THAT(world.log_lines(), testing::ElementsAre("05 Oct 2026 14:02:33 Error 70 encountered in updategraphs."));
    EXPECT_EQ(world.rows.windsamples(), 2);
    EXPECT_EQ(world.state.graphs.draws, 2);
    EXPECT_FALSE(world.state.run.savingrafs);
}

TEST(GraphSample, WithDrawingSwitchedOffGoesOnButIsNeverSavedOrDrawn) {
    Sampling world;
    world.state.menu.mnuDisableGraphs.checked = true;
    for (int n = 0; n < 3; ++n) world.sample();
    EXPECT_EQ(world.rows.windsamples(), 3);
    EXPECT_EQ(world.state.graphs.draws, 0);
    EXPECT_FALSE(world.state.graphs.GraphsDisplayed);
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
    EXPECT_TRUE(world.state.havegrafdata);
}

TEST(GraphSample, DrawingSwitchedOffLaterDoesNotStopTheSaves) {
    Sampling world;
    world.sample();
    world.state.menu.mnuDisableGraphs.checked = true;
    world.sample();
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(world.state.graphs.draws, 1);
}

// --- The rain since midnight

TEST(GraphSample, LooksAfterTheMidnightFileAndReadsIt) {
    Sampling world;
    world.state.settings.tmidnight = false;
    world.state.readings.dtvar = *civil_time({2026, 10, 6, 0, 0, 33});
    world.state.readings.rdattime = "00:00:33";
    world.state.readings.rdattotrain = "0120";
    world.state.rain.rainnow = 123;
    world.sample();
    EXPECT_EQ(world.files.contents("rnslm.dat"), "06 Oct 2026 00:00:33\r\n120\r\n");
    EXPECT_EQ(world.state.rain.RainSinceMidnight, 3);
    world.sample();
    EXPECT_EQ(world.files.contents("rnslm.dat"), "06 Oct 2026 00:00:33\r\n120\r\n") << "once a night";
}

TEST(GraphSample, AtAnyOtherTimeAppendsNothing) {
    Sampling world;
    world.sample();
    EXPECT_FALSE(world.files.exists("rnslm.dat"));
}

TEST(GraphSample, AnErrorBearsItsTagAndLetsTheBusyFlagGo) {
    Sampling world;
    world.state.readings.dtvar = *civil_time({2026, 10, 6, 0, 0, 33});
    world.state.readings.rdattime = "00:00:33";
    world.files.refuse("rnslm.dat", FileResult::disk_full);
    try {
        world.sample();
        FAIL() << "nothing was thrown";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.number, ErrorNumber::disk_full);
        EXPECT_EQ(error.tag, "updategraphs");
    }
    EXPECT_FALSE(world.state.graphs.GrafBusy);
}

TEST(GraphSample, IsBusyWhileItWaitsForAFile) {
    Sampling world;
    world.state.readings.dtvar = *civil_time({2026, 10, 6, 0, 0, 33});
    world.state.readings.rdattime = "00:00:33";
    world.files.put("rnslm.dat", "");
    world.files.set_in_use("rnslm.dat", true);
    world.pauses.start([&] { world.sample(); });
    EXPECT_TRUE(world.state.graphs.GrafBusy);
    world.files.set_in_use("rnslm.dat", false);
    world.pauses.pause(1s);
    EXPECT_FALSE(world.state.graphs.GrafBusy);
}

}  // namespace
}  // namespace nimbry::test
