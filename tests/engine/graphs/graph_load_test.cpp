#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_view.h"
#include "tests/engine/graphs/stored_day.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

TEST(GraphLoad, BringsTheDayBackWithTheTimeThatPassed) {
    StoredDay before(100);
    const std::string file = before.saved_file();
    StoredDay store;
    store.files.put("grafdata.dat", file);
    store.clock.advance(10min);
    loadgrafdata(store.copy);
    EXPECT_TRUE(store.state.havegrafdata);
    EXPECT_EQ(store.rows.windsamples(), 110);
    EXPECT_EQ(store.rows.gtime(110), "??");
    EXPECT_EQ(store.graphs.grafage, 10);
}

TEST(GraphLoad, DrawsAtOnce) {
    StoredDay before(100);
    StoredDay store;
    store.graphs.GraphsDisplayed = false;
    store.files.put("grafdata.dat", before.saved_file());
    loadgrafdata(store.copy);
    EXPECT_EQ(store.graphs.draws, 1);
    EXPECT_TRUE(store.graphs.GraphsDisplayed);
    EXPECT_FALSE(store.graphs.grafsjustloaded);
}

TEST(GraphLoad, WithDrawingSwitchedOffWaitsToBeDrawn) {
    StoredDay before(100);
    StoredDay store;
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

TEST(GraphLoad, WithoutAGoodFileTheStoreIsEmptyAndTheNextSampleStartsOne) {
    const std::string good = StoredDay(10).saved_file();
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
        StoredDay store(20);
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

TEST(GraphLoad, ThatFindsTheDayGoneEmptiesThePanesThatShowedIt) {
    for (const bool there : {true, false}) {
        SCOPED_TRACE(there ? "a file that has become too old" : "no file any more");
        StoredDay store;
        store.files.put("grafdata.dat", StoredDay(100).saved_file());
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

TEST(GraphLoad, ThatFindsNoDayLeavesNothingWaitingToBeDrawn) {
    StoredDay store;
    store.graphs.GraphsDisplayed = false;
    store.state.menu.mnuDisableGraphs.checked = true;
    store.files.put("grafdata.dat", StoredDay(100).saved_file());
    loadgrafdata(store.copy);
    ASSERT_TRUE(store.graphs.grafsjustloaded);
    store.clock.advance(25h);
    loadgrafdata(store.copy);
    EXPECT_FALSE(store.graphs.grafsjustloaded);
    EXPECT_EQ(store.graphs.draws, 0);
}

TEST(GraphLoad, NeverTakesTheLimitsFromTheFile) {
    StoredDay before(10);
    before.graphs.gscale = {};
    StoredDay store;
    store.files.put("grafdata.dat", before.saved_file());
    loadgrafdata(store.copy);
    EXPECT_TRUE(within_limits(store.graphs, series::barometer, 1013));
    EXPECT_TRUE(within_limits(store.graphs, series::outdoor_temperature, 20));
}

TEST(GraphLoad, OfAFileThatCannotBeReadEndsTheProgramUnderItsTag) {
    StoredDay store;
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

TEST(GraphLoad, HappensAtTheStartAndAgainWithTheFirstTrains) {
    const std::string file = StoredDay(100).saved_file();
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

TEST(GraphLoad, LetsTheStatusLabelSaySo) {
    const std::string file = StoredDay(100).saved_file();
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.files.put("grafdata.dat", file);
    world.start();
    world.send_train();
    EXPECT_EQ(world.panel().lblStatus.text, "Current Conditions");
}

}  // namespace
}  // namespace nimbry::test
