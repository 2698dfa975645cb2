#include <benchmark/benchmark.h>

#include <chrono>

#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_svg.h"
#include "engine/graphs/graph_view.h"
#include "tests/world/bare_copy.h"
#include "tests/world/front_day.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// A copy with a full day of samples that has drawn and saved once.
struct FullDay : BareCopy {
    FullDay() {
        state.run.fullystarted = true;
        fill_with_a_front(state, clock.computer_time());
        drawgraph(state);
        minute();
    }
    void minute() {
        clock.advance(1min);
        state.readings.dtvar = clock.computer_time();
        state.panel.Text2[4].text = " 1013 mB";
        updategraphs(copy);
        files.forget_calls();
    }
};

/// What every minute costs with a full store: the sample, the save, the six panes.
void graph_minute(benchmark::State& run) {
    FullDay day;
    for (auto _ : run) day.minute();
}
BENCHMARK(graph_minute)->Unit(benchmark::kMillisecond);

void graph_draw(benchmark::State& run) {
    FullDay day;
    for (auto _ : run) drawgraph(day.state);
}
BENCHMARK(graph_draw)->Unit(benchmark::kMillisecond);

/// One row has changed, the rest keeps its text.
void graph_save(benchmark::State& run) {
    FullDay day;
    for (auto _ : run) {
        day.state.graphs.rows.row(pmm1).set_gdata(0, 12.5F);
        savegrafdata(day.copy, "updategraphs");
        day.files.forget_calls();
    }
}
BENCHMARK(graph_save)->Unit(benchmark::kMillisecond);

/// The first save after a load: every row is formatted.
void graph_first_save(benchmark::State& run) {
    FullDay day;
    for (auto _ : run) {
        run.PauseTiming();
        for (int r = 0; r <= pmm1; ++r) day.state.graphs.rows.row(r).set_gdata(0, 12.5F);
        run.ResumeTiming();
        savegrafdata(day.copy, "updategraphs");
        day.files.forget_calls();
    }
}
BENCHMARK(graph_first_save)->Unit(benchmark::kMillisecond);

void graph_load(benchmark::State& run) {
    FullDay day;
    savegrafdata(day.copy, "updategraphs");
    for (auto _ : run) {
        loadgrafdata(day.copy);
        day.files.forget_calls();
    }
}
BENCHMARK(graph_load)->Unit(benchmark::kMillisecond);

void graph_picture(benchmark::State& run) {
    FullDay day;
    for (auto _ : run) benchmark::DoNotOptimize(graph_svg(day.state, GraphKind::temperature));
}
BENCHMARK(graph_picture)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
