#include "tests/windows/lived_day.h"

#include <chrono>

#include "engine/derived/dates.h"
#include "engine/displays/additional_window.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"
#include "programs/nimbry-station/console.h"
#include "tests/world/world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t seed = 232;

}  // namespace

void fill_with_a_lived_day(WeatherState& state) {
    const CivilTime end = *civil_time({2026, 10, 5, 14, 26, 40});
    const CivilTime begin = end - 30h;
    World world(begin);
    world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nLatitude=51.477900\r\nLongitude=0.000000\r\n");
    world.start();
    simulator::Console console(seed, begin);
    for (CivilTime now = world.clock.computer_time(); now <= end; now = world.clock.computer_time()) {
        console.live_to(now);
        world.deliver(console.train());
        world.run_for(9900ms);
    }
    world.act([&] { mnuAdditional(world.copy()); });
    const WeatherState& lived = world.state();
    state.settings = lived.settings;
    state.units = lived.units;
    state.readings = lived.readings;
    state.records = lived.records;
    state.menu = lived.menu;
    state.panel = lived.panel;
    state.additional = lived.additional;
    state.big = lived.big;
    state.graphs.rows = lived.graphs.rows;
    setgraphscales(state);
    state.run.fullystarted = state.havegrafdata = true;
    state.menu.mnuAdditional.enabled = state.menu.fmb[4].enabled = true;
    state.panel.Lamp.fore = colours::red;
    drawgraph(state);
}

}  // namespace nimbry::test
