#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

#include "engine/derived/dates.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// A day's weather as ready-made frames, so that only the reading of them is measured.
std::vector<Bytes> day_of_trains() {
    std::vector<Bytes> frames;
    StationReadings station;
    const CivilTime start = *civil_time({2026, 10, 5, 9, 30, 0});
    for (int n = 0; n < 1024; ++n) {
        station.clock = station_moment(start + n * 10s);
        station.temperature.outdoor = -5 + n % 350 * 0.1;
        station.temperature.indoor = 18 + n % 40 * 0.1;
        station.humidity.outdoor = 40 + n % 58;
        station.barometer = {.hpa = 990 + n % 40, .trend = 1 << n % 3, .outlook = 1 << n % 4};
        station.rain = {.rate_mm = n % 20, .total_mm = 100 + n / 16};
        station.wind.gust_ms = n % 180 * 0.1;
        station.wind.average_ms = n % 90 * 0.1;
        station.wind.gust_direction = n % 360;
        station.wind.average_direction = (n + 20) % 360;
        frames.push_back(write_train(station));
    }
    return frames;
}

/// A whole train: checksums, digit tables, the five groups, every box and derived value, and the cycle, in virtual time
/// on a disk in memory. Under heaptrack a train makes about 35 allocations, short-lived texts nearly all, and the heap
/// is as large after forty thousand trains as after four thousand. With `graphs` the six panes are drawn anew each
/// minute, as they are unless the user switches them off.
void whole_cycle(benchmark::State& run) {
    const std::vector<Bytes> frames = day_of_trains();
    BareCopy world;
    world.clock.set_computer_time(*civil_time({2026, 10, 5, 9, 30, 0}));
    world.state.menu.mnuDisableGraphs.checked = run.range(0) == 0;
    world.frame(frames[0]);
    std::size_t n = 0;
    for (auto _ : run) {
        world.clock.advance(10s);
        world.frame(frames[n++ % frames.size()]);
        if (n % frames.size() == 0) {
            // The day begins anew, and what the world remembers for tests goes.
            world.clock.set_computer_time(*civil_time({2026, 10, 5, 9, 30, 0}));
            world.files.forget_calls();
            world.notices.balloons.clear();
        }
    }
    run.SetItemsProcessed(run.iterations());
    run.SetLabel("trains");
}
BENCHMARK(whole_cycle)->ArgName("graphs")->Arg(0)->Arg(1);

/// A lone wind group, the same way.
void lone_wind(benchmark::State& run) {
    const std::vector<Bytes> frames = day_of_trains();
    StationReadings station;
    const Bytes lone = write_lone_wind(station);
    BareCopy world;
    world.frame(frames[0]);
    world.frame(frames[1]);
    for (auto _ : run) world.frame(lone);
    run.SetItemsProcessed(run.iterations());
    run.SetLabel("lone groups");
}
BENCHMARK(lone_wind);

}  // namespace
}  // namespace nimbry::test
