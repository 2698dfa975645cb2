#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <array>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_view.h"
#include "engine/station/train_writer.h"
#include "tests/world/bare_copy.h"
#include "tests/world/front_day.h"
#include "windows/form1.h"

namespace nimbry::test {
namespace {

/// Two trains that have nothing in common but the day: whatever can change in a box does.
std::array<Bytes, 2> two_trains() {
    StationReadings warm;
    warm.clock = station_moment(*civil_time({2026, 10, 5, 14, 0, 10}));
    StationReadings cold;
    cold.clock = station_moment(*civil_time({2026, 10, 5, 14, 0, 20}));
    cold.temperature = {.indoor = 18.4, .outdoor = -7.9};
    cold.humidity.indoor = 61;
    cold.humidity.outdoor = 97;
    cold.barometer = {.hpa = 987, .trend = 4, .outlook = 8};
    cold.rain = {.rate_mm = 17, .total_mm = 842};
    cold.wind.gust_ms = 17.3;
    cold.wind.average_ms = 9.8;
    cold.wind.gust_direction = 281;
    cold.wind.average_direction = 262;
    return {write_train(warm), write_train(cold)};
}

/// What a train leaves behind for the window.
struct Shown {
    MainPanel panel;
    Readings readings;
};

/// A copy with a full day of graphs and what two trains make of it.
class Scene {
public:
    Scene() {
        world_.clock.set_computer_time(*civil_time({2026, 10, 5, 14, 0, 10}));
        for (std::size_t n = 0; n < trains_.size(); ++n) {
            world_.frame(two_trains()[n]);
            trains_[n] = {world_.state.panel, world_.state.readings};
        }
        fill_with_a_front(world_.state, *civil_time({2026, 10, 5, 14, 0, 0}));
        drawgraph(world_.state);
    }

    [[nodiscard]] WeatherState& state() { return world_.state; }
    /// The other train has come.
    void turn() {
        turn_ = 1 - turn_;
        world_.state.panel = trains_[turn_].panel;
        world_.state.readings = trains_[turn_].readings;
    }

private:
    BareCopy world_;
    std::array<Shown, 2> trains_;
    std::size_t turn_ = 0;
};

/// From the engine's event to the picture: what has changed is found, laid out and painted. With `graphs` the six panes
/// are painted too, as once a minute.
void repaint_after_a_train(benchmark::State& run) {
    Scene scene;
    windows::Form1 form(scene.state(), {});
    form.resize(1180, 800);
    form.show();
    QCoreApplication::processEvents();
    int pieces = 0;
    for (auto _ : run) {
        run.PauseTiming();
        scene.turn();
        if (run.range(0) == 1) drawgraph(scene.state());
        run.ResumeTiming();
        pieces = form.refresh();
        QCoreApplication::processEvents();
    }
    run.counters["pieces"] = pieces;
}

/// The window made, laid out and painted for the first time, with every box and graph filled.
void build_main_window(benchmark::State& run) {
    Scene scene;
    for (auto _ : run) {
        windows::Form1 form(scene.state(), {});
        form.resize(1180, 800);
        form.show();
        QCoreApplication::processEvents();
    }
}

BENCHMARK(repaint_after_a_train)->ArgName("graphs")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(build_main_window)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
