#include "engine/graphs/graph_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/exits.h"
#include "engine/core/process_cycle.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"
#include "engine/records/load_extremes.h"
#include "engine/setup/units_dialog.h"
#include "tests/engine/graphs/stored_day.h"
#include "tests/world/front_day.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// --- Saving

TEST(GraphSave, WritesTheWholeStoreInOneCallAndInPlace) {
    StoredDay store(5);
    store.save();
    EXPECT_EQ(store.file(), store.saved_file());
    ASSERT_EQ(store.files.calls().size(), 1U);
    EXPECT_EQ(store.files.calls()[0].operation, "rewrite");
}

TEST(GraphSave, BearsTheComputersTimeAlthoughItsRowsBearTheStations) {
    StoredDay store(5);
    store.clock.set_computer_time(*civil_time({2026, 10, 5, 18, 30, 7}));
    store.save();
    EXPECT_TRUE(store.file().starts_with("05 Oct 2026 18:30:07\r\n"));
}

struct RefusalCase {
    const char* law;
    int samples;
    void (*spoil)(WeatherState&);
    bool saves;
};

TEST(GraphSave, NeedsTwoSamplesAFirstTrainAndADrawing) {
    const RefusalCase cases[] = {
        {"no sample", 0, [](WeatherState&) {}, false},
        {"one sample", 1, [](WeatherState&) {}, false},
        {"two", 2, [](WeatherState&) {}, true},
        {"before the first train", 2, [](WeatherState& s) { s.run.fullystarted = false; }, false},
        {"before the first drawing", 2, [](WeatherState& s) { s.graphs.GraphsDisplayed = false; }, false},
    };
    for (const RefusalCase& c : cases) {
        SCOPED_TRACE(c.law);
        StoredDay store(c.samples);
        c.spoil(store.state);
        store.save();
        EXPECT_EQ(store.files.exists("grafdata.dat"), c.saves);
    }
}

TEST(GraphSave, ThatFailsIsOneLineInTheLogUnderItsCallersTag) {
    StoredDay store(5);
    store.files.refuse("grafdata.dat", FileResult::disk_full);
    store.save("updategraphs");
    EXPECT_THAT(store.log_lines(), ElementsAre("05 Oct 2026 13:59:40 Error 61 encountered in updategraphs."));
    EXPECT_THAT(store.notices.boxes, IsEmpty());
    EXPECT_FALSE(store.state.run.ProgramClosing);
    store.files.allow();
    store.files.refuse("grafdata.dat", FileResult::permission);
    store.save("process routine");
    EXPECT_EQ(store.log_lines().back(), "05 Oct 2026 13:59:40 Error 70 encountered in process routine.");
}

TEST(GraphSave, ThatFailsOnAFullDiskIsPassedOver) {
    StoredDay store(5);
    store.files.refuse_changes(FileResult::disk_full);
    store.save();
    EXPECT_THAT(store.log_lines(), IsEmpty());
}

struct StampCase {
    const char* law;
    std::vector<const char*> stamps;  ///< of the rows
    const char* last;                 ///< what the last row has afterwards
};

TEST(GraphSave, GivesTheLastRowATime) {
    const StampCase cases[] = {
        {"its own stands", {"05 Oct 2026 13:58:00", "05 Oct 2026 13:59:00"}, "05 Oct 2026 13:59:00"},
        {"an unknown one takes the last known",
         {"05 Oct 2026 13:57:00", "05 Oct 2026 13:58:00", "??", "??"},
         "05 Oct 2026 13:58:00"},
        {"passing over what is no date", {"05 Oct 2026 13:57:00", "rubbish", "??"}, "05 Oct 2026 13:57:00"},
        {"no known time at all: the computer's", {"??", "??"}, "05 Oct 2026 14:00:00"},
        {"no date: the computer's", {"05 Oct 2026 13:58:00", "rubbish"}, "05 Oct 2026 14:00:00"},
        {"nothing: the computer's", {"05 Oct 2026 13:58:00", ""}, "05 Oct 2026 14:00:00"},
    };
    for (const StampCase& c : cases) {
        SCOPED_TRACE(c.law);
        StoredDay store;
        for (const char* stamp : c.stamps) {
            GraphRow row;
            row.set_gtime(stamp);
            store.rows.append(row);
        }
        store.save();
        const int last = store.rows.windsamples();
        EXPECT_EQ(store.rows.gtime(last), c.last);
        EXPECT_EQ(store.file(), store.saved_file());
        for (int r = 1; r < last; ++r) EXPECT_EQ(store.rows.gtime(r), c.stamps[static_cast<std::size_t>(r - 1)]);
    }
}

// --- Reset

TEST(GraphReset, AsksFirst) {
    StoredDay store(100);
    resetgraphs(store.copy);
    ASSERT_EQ(store.notices.boxes.size(), 1U);
    const MessageBox& box = store.notices.boxes[0].what;
    EXPECT_EQ(box.title, "Nimbry message");
    EXPECT_EQ(box.text, "Are you sure you want to completely reset the graphs?\r\nAll stored graph data will be lost.");
    EXPECT_EQ(box.icon, "?");
    EXPECT_EQ(box.choices, Choices::yes_no);
    EXPECT_THAT(store.sounds.played, ElementsAre("click.WAV"));
    EXPECT_EQ(store.rows.windsamples(), 100) << "no was the answer";
}

TEST(GraphReset, OnYesEmptiesEverythingAndDraws) {
    StoredDay store(100);
    store.save();
    store.state.havegrafdata = true;
    store.state.readings.wstempsng = 12;
    store.graphs.webpeakgust = 12;
    store.graphs.grmax = 100;
    drawgraph(store.state);
    const int draws = store.graphs.draws;
    store.notices.will_answer(Answer::yes);
    resetgraphs(store.copy);
    EXPECT_FALSE(store.files.exists("grafdata.dat"));
    EXPECT_EQ(store.rows.windsamples(), 0);
    for (int r = 0; r <= pmm1; ++r) {
        ASSERT_EQ(store.rows.gtime(r), "");
        for (int s = 0; s < series::count; ++s) ASSERT_EQ(store.rows.gdata(s, r), 0);
    }
    EXPECT_EQ(store.state.readings.wstempsng, 0);
    EXPECT_EQ(store.graphs.webpeakgust, 0);
    EXPECT_EQ(store.graphs.grmax, 0);
    EXPECT_EQ(store.graphs.draws, draws + 1);
    EXPECT_TRUE(store.state.havegrafdata) << "a server does not turn deaf";
    EXPECT_TRUE(within_limits(store.graphs, series::barometer, 1013)) << "the set-up has run";
    EXPECT_EQ(store.graphs.gscale[20], (std::array<float, 3>{}));
}

TEST(GraphReset, GoesOnTakingSamples) {
    StoredDay store(100);
    store.state.panel.Text2[4].text = " 1013 mB";
    store.notices.will_answer(Answer::yes);
    resetgraphs(store.copy);
    updategraphs(store.copy);
    EXPECT_EQ(store.rows.windsamples(), 1);
    EXPECT_EQ(store.rows.gdata(4, 1), 1013);
}

TEST(GraphReset, WithoutAFileThereIsNoneToDelete) {
    StoredDay store(100);
    store.notices.will_answer(Answer::yes);
    resetgraphs(store.copy);
    EXPECT_THAT(store.files.calls(), IsEmpty());
    EXPECT_EQ(store.rows.windsamples(), 0);
}

// --- Units

TEST(GraphUnits, AReloadAfterAChangeOfUnitsEmptiesTheStore) {
    StartedWorld world;
    world.send_trains(20);
    ASSERT_GE(world.state().graphs.rows.windsamples(), 2);
    ASSERT_TRUE(world.files.exists("grafdata.dat"));
    world.state().readings.wstempsng = 9;
    world.act([&] { loadextremes(world.copy(), true); });
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 0);
    EXPECT_EQ(world.state().readings.wstempsng, 0);
    EXPECT_FALSE(world.state().havegrafdata) << "until the next sample";
    world.send_trains(7);
    EXPECT_TRUE(world.state().havegrafdata);
}

TEST(GraphUnits, AcceptedInTheirDialogDrawAtOnceOnTheirOwnScale) {
    StoredDay store(3);
    drawgraph(store.state);
    const int draws = store.graphs.draws;
    UnitsDialog dialog = units_dialog(store.state.settings);
    dialog.optTempC = false;
    dialog.optTempF = true;
    accept_units(store.copy, dialog);
    EXPECT_EQ(store.graphs.draws, draws + 1);
    EXPECT_EQ(store.graphs.limits.grtmax, 140);
    EXPECT_EQ(store.rows.gdata(0, 3), 3) << "the samples keep their numbers";
    EXPECT_EQ(store.state.panel.gLabel12.text, "Temperature" + degrees('F'));
}

TEST(GraphUnits, UntilThenTheSamplesKeepTheirNumbersOnTheNewScale) {
    StoredDay store(3);
    store.state.settings.fBarinhg = store.state.settings.fTempF = true;
    store.state.units = units_from(store.state.settings);
    setgraphscales(store.state);
    drawgraph(store.state);
    EXPECT_EQ(store.rows.gdata(4, 3), 1003);
    EXPECT_EQ(store.rows.gdata(0, 3), 3);
    EXPECT_EQ(store.state.panel.gLabel12.text, "Temperature \260F");
    EXPECT_EQ(store.graphs.gscale[10], (std::array<float, 3>{0, 4, 0.5F})) << "ticks of two degrees";
}

// --- The exit and the cycle

TEST(GraphSave, IsPartOfEveryExit) {
    StartedWorld world;
    world.send_trains(20);
    world.files.take_away("grafdata.dat");
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_TRUE(world.engine.gone());
}

TEST(GraphSave, ThatFailsAtTheExitIsLoggedAndTheProgramGoes) {
    StartedWorld world;
    world.send_trains(20);
    world.files.refuse("grafdata.dat", FileResult::permission);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 0);
    const std::vector<std::string> log = world.log();
    ASSERT_GE(log.size(), 2U);
    EXPECT_THAT(log[log.size() - 2], testing::EndsWith(" Error 70 encountered in mnuExit1."));
}

TEST(GraphSave, ComesWithTheThirtiethCycle) {
    StoredDay store(5);
    store.state.run.firstrun = false;
    store.state.run.SaveCounter = 29;
    processcycle(store.copy);
    EXPECT_EQ(store.file(), store.saved_file());
    EXPECT_FALSE(store.state.run.savingrafs);
}

TEST(GraphSave, OfAFullDayFormatsOnlyWhatIsNewAndSavesTheSameBytes) {
    BareCopy world;
    world.state.run.fullystarted = true;
    fill_with_a_front(world.state, world.clock.computer_time());
    const std::string first = graph_file_text(world.state.graphs, world.clock.computer_time());
    world.state.readings.dtvar = world.clock.computer_time() + 1min;
    updategraphs(world.copy);
    updategraphs(world.copy);
    const std::string text = world.files.contents("grafdata.dat");
    GraphState fresh;  // nothing formatted before
    ASSERT_EQ(read_graph_file(text, world.clock.computer_time(), fresh), GraphFileOutcome::loaded);
    EXPECT_EQ(graph_file_text(fresh, world.clock.computer_time()), text);
    EXPECT_NE(text, first);
}

}  // namespace
}  // namespace nimbry::test
