#include <benchmark/benchmark.h>

#include <QImage>
#include <memory>
#include <string>

#include "engine/graphs/graph_view.h"
#include "tests/world/front_day.h"
#include "tests/world/virtual_clock.h"
#include "windows/graph_pane.h"

namespace nimbry::test {
namespace {

constexpr QSize main_size(800, 450), small_size(150, 60);

/// A pane with a full day in it, on a screen at 100 % or 200 %.
class PaintedPane {
public:
    PaintedPane(GraphKind kind, int pane, int percent) : size_(pane == 0 ? main_size : small_size) {
        reset_main_panel(state_);
        fill_with_a_front(state_, VirtualClock::usual_start);
        // The graph that comes round to this pane.
        state_.panel.gLabel12.text = graph_title(graph_after(kind, graph_count - pane), state_.units);
        drawgraph(state_);
        pane_ = std::make_unique<windows::GraphPane>(pane, state_.graphs, actions_);
        pane_->resize(size_);
        const double ratio = percent / 100.0;
        screen_ = QImage(size_ * ratio, QImage::Format_ARGB32_Premultiplied);
        screen_.setDevicePixelRatio(ratio);
        screen_.fill(Qt::black);
    }

    void paint() { pane_->render(&screen_); }
    /// As after every sample: nothing of the last picture is used.
    void paint_afresh() {
        pane_->show_drawing();
        paint();
    }
    void read_off(int row) {
        read_graph_row(state_, row);
        pane_->show_marker();
    }

private:
    QSize size_;
    WeatherState state_;
    windows::GraphActions actions_;
    std::unique_ptr<windows::GraphPane> pane_;
    QImage screen_;
};

GraphKind kind_of(const benchmark::State& run) {
    return static_cast<GraphKind>(run.range(0));
}

/// What each minute costs the window, for each graph (0 temperature to 5 direction) in the main pane.
void paint_main_pane(benchmark::State& run) {
    PaintedPane pane(kind_of(run), 0, static_cast<int>(run.range(1)));
    run.SetLabel(std::string(graph_name(kind_of(run))));
    for (auto _ : run) pane.paint_afresh();
}

void paint_small_pane(benchmark::State& run) {
    PaintedPane pane(kind_of(run), 1, static_cast<int>(run.range(1)));
    run.SetLabel(std::string(graph_name(kind_of(run))));
    for (auto _ : run) pane.paint_afresh();
}

/// What each movement of the pointer costs: the picture is there, the marker and its text are painted on it.
void paint_marker(benchmark::State& run) {
    PaintedPane pane(kind_of(run), 0, static_cast<int>(run.range(1)));
    run.SetLabel(std::string(graph_name(kind_of(run))));
    pane.paint();
    int row = 0;
    for (auto _ : run) {
        pane.read_off(1 + row++ % pmm1);
        pane.paint();
    }
}

void each_graph_and_screen(benchmark::internal::Benchmark* which) {
    which->ArgsProduct({benchmark::CreateDenseRange(0, graph_count - 1, 1), {100, 200}})
        ->ArgNames({"graph", "percent"})
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(paint_main_pane)->Apply(each_graph_and_screen);
BENCHMARK(paint_small_pane)->Apply(each_graph_and_screen);
BENCHMARK(paint_marker)->Args({0, 100})->Args({0, 200})->ArgNames({"graph", "percent"})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
