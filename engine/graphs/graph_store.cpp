#include "engine/graphs/graph_store.h"

#include "engine/core/run_time_error.h"
#include "engine/core/soft_error.h"
#include "engine/core/switches.h"
#include "engine/derived/dates.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"

namespace nimbry {
namespace {

const std::string file_name(graph_file);

/// The newest row must bear a time, or a reader could not tell where the day ends.
void stamp_last_row(GraphRows& rows, CivilTime computer_time) {
    const int last = rows.windsamples();
    if (parse_stamp(rows.gtime(last))) return;
    if (rows.gtime(last) == unknown_time) {
        for (int r = last - 1; r >= 1; --r) {
            if (!parse_stamp(rows.gtime(r))) continue;
            rows.row(last).set_gtime(rows.gtime(r));
            return;
        }
    }
    rows.row(last).set_gtime(stamp_text(computer_time));
}

}  // namespace

void loadgrafdata(Copy& copy) {
    tagged("loadgrafdata", [&] {
        WeatherState& state = copy.state;
        GraphState& graphs = state.graphs;
        state.havegrafdata = false;
        if (copy.ports.files.exists(file_name)) {
            std::string text;
            require(copy.ports.files.read(file_name, text));
            state.havegrafdata =
                read_graph_file(text, copy.ports.clock.computer_time(), graphs) == GraphFileOutcome::loaded;
        } else {
            clear_store(graphs);
        }
        setgraphscales(state);
        graphs.grafsjustloaded = state.havegrafdata;
        // Panes that show a day which has gone are emptied; a first drawing waits for something to show.
        if (state.havegrafdata || graphs.draws > 0) drawgraph(state);
    });
}

void savegrafdata(Copy& copy, std::string_view caller) {
    copy.state.run.savingrafs.set();
    const BusyFlag::Held saving(copy.state.run.savingrafs);
    GraphState& graphs = copy.state.graphs;
    if (graphs.rows.windsamples() < 2 || !copy.state.run.fullystarted || !graphs.GraphsDisplayed) return;
    const CivilTime now = copy.ports.clock.computer_time();
    stamp_last_row(graphs.rows, now);
    const FileResult result = copy.ports.files.rewrite(file_name, graph_file_text(graphs, now));
    if (result != FileResult::ok) log_soft_error(copy, error_of(result), caller);
}

void resetgraphs(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    const Answer answer = copy.ports.notices.box({.title = "Nimbry message",
                                                  .text = "Are you sure you want to completely reset the graphs?\r\n"
                                                          "All stored graph data will be lost.",
                                                  .icon = "?",
                                                  .choices = Choices::yes_no});
    if (answer == Answer::yes) discard_graphs(copy);
}

void discard_graphs(Copy& copy) {
    WeatherState& state = copy.state;
    if (copy.ports.files.exists(file_name)) copy.ports.files.remove(file_name);
    clear_store(state.graphs);
    state.graphs.webpeakgust = 0;
    state.readings.wstempsng = 0;
    setgraphscales(state);
    leave_graph(state);
    drawgraph(state);
}

void apply_graph_switches(Copy& copy) {
    show_graph_labels(copy.state);
    drawgraph(copy.state);
}

}  // namespace nimbry
