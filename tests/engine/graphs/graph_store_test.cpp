#include "engine/graphs/graph_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/exits.h"
#include "engine/core/process_cycle.h"
#include "engine/derived/dates.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"
#include "engine/records/load_extremes.h"
#include "engine/setup/units_dialog.h"
#include "tests/world/bare_copy.h"
#include "tests/world/front_day.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A copy that runs and has drawn, with `count` samples up to now.
struct Store : BareCopy {
    explicit Store(int count = 0) {
        state.run.fullystarted = true;
        state.readings.dtvar = clock.computer_time() - 20s;
        setgraphscales(state);
        for (int r = 1; r <= count; ++r) {
            GraphRow row;
            row.set_gtime(stamp_text(clock.computer_time() - std::chrono::minutes{count - r}));
            row.set_gdata(series::barometer, 1000 + static_cast<float>(r % 30));
            row.set_gdata(series::outdoor_temperature, static_cast<float>(r % 10));
            state.graphs.rows.append(row);
        }
        state.graphs.GraphsDisplayed = true;
    }
    GraphState& graphs = state.graphs;
    GraphRows& rows = state.graphs.rows;

    void save(const char* caller = "process routine") {
        state.run.savingrafs.set();
        savegrafdata(copy, caller);
        EXPECT_FALSE(state.run.savingrafs) << "on every way out";
    }
    [[nodiscard]] std::string file() const { return files.contents("grafdata.dat"); }
    /// Another copy's file, as this one would have saved it.
    [[nodiscard]] std::string saved_file() const { return graph_file_text(graphs, clock.computer_time()); }
};

// --- Saving

TEST(GraphSave, writes_the_whole_store_in_one_call_and_in_place) {
    Store store(5);
    store.save();
    EXPECT_EQ(store.file(), store.saved_file());
    ASSERT_EQ(store.files.calls().size(), 1U);
    EXPECT_EQ(store.files.calls()[0].operation, "rewrite");
}

TEST(GraphSave, bears_the_computers_time_although_its_rows_bear_the_stations) {
    Store store(5);
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

TEST(GraphSave, needs_two_samples_a_first_train_and_a_drawing) {
    const RefusalCase cases[] = {
        {"no sample", 0, [](WeatherState&) {}, false},
        {"one sample", 1, [](WeatherState&) {}, false},
        {"two", 2, [](WeatherState&) {}, true},
        {"before the first train", 2, [](WeatherState& s) { s.run.fullystarted = false; }, false},
        {"before the first drawing", 2, [](WeatherState& s) { s.graphs.GraphsDisplayed = false; }, false},
    };
    for (const RefusalCase& c : cases) {
        SCOPED_TRACE(c.law);
        Store store(c.samples);
        c.spoil(store.state);
        store.save();
        EXPECT_EQ(store.files.exists("grafdata.dat"), c.saves);
    }
}

TEST(GraphSave, that_fails_is_one_line_in_the_log_under_its_callers_tag) {
    Store store(5);
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

TEST(GraphSave, that_fails_on_a_full_disk_is_passed_over) {
    Store store(5);
    store.files.refuse_changes(FileResult::disk_full);
    store.save();
    EXPECT_THAT(store.log_lines(), IsEmpty());
}

struct StampCase {
    const char* law;
    std::vector<const char*> stamps;  ///< of the rows
    const char* last;                 ///< what the last row has afterwards
};

TEST(GraphSave, gives_the_last_row_a_time) {
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
        Store store;
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

// --- Loading

TEST(GraphLoad, brings_the_day_back_with_the_time_that_passed) {
    Store before(100);
    const std::string file = before.saved_file();
    Store store;
    store.files.put("grafdata.dat", file);
    store.clock.advance(10min);
    loadgrafdata(store.copy);
    EXPECT_TRUE(store.state.havegrafdata);
    EXPECT_EQ(store.rows.windsamples(), 110);
    EXPECT_EQ(store.rows.gtime(110), "??");
    EXPECT_EQ(store.graphs.grafage, 10);
}

TEST(GraphLoad, draws_at_once) {
    Store before(100);
    Store store;
    store.graphs.GraphsDisplayed = false;
    store.files.put("grafdata.dat", before.saved_file());
    loadgrafdata(store.copy);
    EXPECT_EQ(store.graphs.draws, 1);
    EXPECT_TRUE(store.graphs.GraphsDisplayed);
    EXPECT_FALSE(store.graphs.grafsjustloaded);
}

TEST(GraphLoad, with_drawing_switched_off_waits_to_be_drawn) {
    Store before(100);
    Store store;
    store.graphs.GraphsDisplayed = false;
    store.state.menu.mnuDisableGraphs.checked = true;
    store.files.put("grafdata.dat", before.saved_file());
    loadgrafdata(store.copy);
    EXPECT_EQ(store.graphs.draws, 0);
    EXPECT_FALSE(store.graphs.GraphsDisplayed);
    EXPECT_TRUE(store.graphs.grafsjustloaded);
    EXPECT_TRUE(store.state.havegrafdata);
}

struct AbsentCase {
    const char* law;
    std::optional<std::string> file;
};

TEST(GraphLoad, without_a_good_file_the_store_is_empty_and_the_next_sample_starts_one) {
    const std::string good = Store(10).saved_file();
    const AbsentCase cases[] = {
        {"no file", std::nullopt},
        {"an empty one", ""},
        {"a stale one", "04 Oct 2026 13:59:59\r\n" + good.substr(22)},
        {"one from the future", "05 Oct 2026 14:00:01\r\n" + good.substr(22)},
        {"a text in the date's place", "yesterday\r\n" + good.substr(22)},
        {"a short one", good.substr(0, good.size() / 2)},
    };
    for (const AbsentCase& c : cases) {
        SCOPED_TRACE(c.law);
        Store store(20);
        store.state.havegrafdata = true;
        if (c.file) store.files.put("grafdata.dat", *c.file);
        loadgrafdata(store.copy);
        EXPECT_FALSE(store.state.havegrafdata);
        EXPECT_EQ(store.rows.windsamples(), 0);
        EXPECT_FALSE(store.graphs.grafsjustloaded);
        EXPECT_EQ(store.graphs.draws, 0);
        EXPECT_THAT(store.log_lines(), IsEmpty()) << "a bad file is nothing to report";
        updategraphs(store.copy);
        EXPECT_TRUE(store.state.havegrafdata);
        EXPECT_EQ(store.rows.windsamples(), 1);
    }
}

TEST(GraphLoad, that_finds_the_day_gone_empties_the_panes_that_showed_it) {
    for (const bool there : {true, false}) {
        SCOPED_TRACE(there ? "a file that has become too old" : "no file any more");
        Store store;
        store.files.put("grafdata.dat", Store(100).saved_file());
        loadgrafdata(store.copy);
        ASSERT_FALSE(store.graphs.panes[3].lines.size() == 2) << "axes alone";
        read_graph_row(store.state, 50);
        if (!there) store.files.take_away("grafdata.dat");
        store.clock.advance(24h + 1s);
        loadgrafdata(store.copy);
        EXPECT_FALSE(store.state.havegrafdata);
        EXPECT_EQ(store.graphs.panes[3].lines.size(), 2U) << "axes alone";
        EXPECT_FALSE(store.graphs.marker);
        EXPECT_EQ(store.graphs.grmax, 0);
        EXPECT_EQ(store.graphs.grafage, 0);
    }
}

TEST(GraphLoad, that_finds_no_day_leaves_nothing_waiting_to_be_drawn) {
    Store store;
    store.graphs.GraphsDisplayed = false;
    store.state.menu.mnuDisableGraphs.checked = true;
    store.files.put("grafdata.dat", Store(100).saved_file());
    loadgrafdata(store.copy);
    ASSERT_TRUE(store.graphs.grafsjustloaded);
    store.clock.advance(25h);
    loadgrafdata(store.copy);
    EXPECT_FALSE(store.graphs.grafsjustloaded);
    EXPECT_EQ(store.graphs.draws, 0);
}

TEST(GraphLoad, never_takes_the_limits_from_the_file) {
    Store before(10);
    before.graphs.gscale = {};
    Store store;
    store.files.put("grafdata.dat", before.saved_file());
    loadgrafdata(store.copy);
    EXPECT_TRUE(within_limits(store.graphs, series::barometer, 1013));
    EXPECT_TRUE(within_limits(store.graphs, series::outdoor_temperature, 20));
}

TEST(GraphLoad, of_a_file_that_cannot_be_read_ends_the_program_under_its_tag) {
    Store store;
    store.files.put("grafdata.dat", "x");
    store.files.refuse("grafdata.dat", FileResult::permission);
    try {
        loadgrafdata(store.copy);
        FAIL() << "nothing was thrown";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.number, ErrorNumber::permission);
        EXPECT_EQ(error.tag, "loadgrafdata");
    }
}

TEST(GraphLoad, happens_at_the_start_and_again_with_the_first_trains) {
    const std::string file = Store(100).saved_file();
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.files.put("grafdata.dat", file);
    world.start();
    EXPECT_TRUE(world.state().havegrafdata);
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 100) << "before any data";
    EXPECT_GT(world.state().graphs.draws, 0);
    world.run_for(10min);
    world.send_train();
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 100);
    world.send_train();
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 110) << "aged by the time it waited for data";
}

TEST(GraphLoad, lets_the_status_label_say_so) {
    const std::string file = Store(100).saved_file();
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.files.put("grafdata.dat", file);
    world.start();
    world.send_train();
    EXPECT_EQ(world.panel().lblStatus.text, "Current Conditions");
}

// --- Reset

TEST(GraphReset, asks_first) {
    Store store(100);
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

TEST(GraphReset, on_yes_empties_everything_and_draws) {
    Store store(100);
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

TEST(GraphReset, goes_on_taking_samples) {
    Store store(100);
    store.state.panel.Text2[4].text = " 1013 mB";
    store.notices.will_answer(Answer::yes);
    resetgraphs(store.copy);
    updategraphs(store.copy);
    EXPECT_EQ(store.rows.windsamples(), 1);
    EXPECT_EQ(store.rows.gdata(4, 1), 1013);
}

TEST(GraphReset, without_a_file_there_is_none_to_delete) {
    Store store(100);
    store.notices.will_answer(Answer::yes);
    resetgraphs(store.copy);
    EXPECT_THAT(store.files.calls(), IsEmpty());
    EXPECT_EQ(store.rows.windsamples(), 0);
}

// --- Units

TEST(GraphUnits, a_reload_after_a_change_of_units_empties_the_store) {
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

TEST(GraphUnits, accepted_in_their_dialog_draw_at_once_on_their_own_scale) {
    Store store(3);
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

TEST(GraphUnits, until_then_the_samples_keep_their_numbers_on_the_new_scale) {
    Store store(3);
    store.state.settings.fBarinhg = store.state.settings.fTempF = true;
    store.state.units = units_from(store.state.settings);
    setgraphscales(store.state);
    drawgraph(store.state);
    EXPECT_EQ(store.rows.gdata(4, 3), 1003);
    EXPECT_EQ(store.rows.gdata(0, 3), 3);
    EXPECT_EQ(store.state.panel.gLabel12.text,
              "Temperature \xB0"
              "F");
    EXPECT_EQ(store.graphs.gscale[10], (std::array<float, 3>{0, 4, 0.5F})) << "ticks of two degrees";
}

// --- The exit and the cycle

TEST(GraphSave, is_part_of_every_exit) {
    StartedWorld world;
    world.send_trains(20);
    world.files.take_away("grafdata.dat");
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_TRUE(world.engine.gone());
}

TEST(GraphSave, that_fails_at_the_exit_is_logged_and_the_program_goes) {
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

TEST(GraphSave, comes_with_the_thirtieth_cycle) {
    Store store(5);
    store.state.run.firstrun = false;
    store.state.run.SaveCounter = 29;
    processcycle(store.copy);
    EXPECT_EQ(store.file(), store.saved_file());
    EXPECT_FALSE(store.state.run.savingrafs);
}

TEST(GraphSave, of_a_full_day_formats_only_what_is_new_and_saves_the_same_bytes) {
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
