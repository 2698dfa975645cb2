// Any bytes as the graphs' file. The laws: whatever they are, the store takes the next sample and draws it; and a day
// that was saved loads as the same day, byte for byte.
#include "engine/graphs/graph_file.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_svg.h"
#include "engine/graphs/graph_view.h"
#include "tests/world/bare_copy.h"

namespace {

using namespace nimbry;

void expect(bool law) {
    if (!law) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    test::BareCopy world;
    world.state.run.fullystarted = true;
    // The first byte turns the clock: most dates in a file would be a day past otherwise.
    const std::string file(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto saved = parse_stamp(std::string_view(file).substr(0, file.find_first_of("\r\n")));
    if (saved) world.clock.set_computer_time(*saved + std::chrono::minutes{data[0] * 6 - 1});
    world.files.put(std::string(graph_file), file);

    loadgrafdata(world.copy);
    GraphState& graphs = world.state.graphs;
    const int before = graphs.rows.windsamples();
    expect(before >= 0 && before <= pmm1);
    expect(world.state.havegrafdata == (before > 0));

    world.state.readings.dtvar = world.clock.computer_time();
    world.state.panel.Text2[4].text = " 1013 mB";
    updategraphs(world.copy);
    expect(world.state.havegrafdata);
    expect(graphs.rows.windsamples() == std::min(before + 1, pmm1));
    expect(graphs.rows.gdata(series::barometer, graphs.rows.windsamples()) == 1013);
    for (int n = 0; n < graph_count; ++n) expect(!graph_svg(world.state, static_cast<GraphKind>(n)).empty());
    move_over_graph(world.state, 3000);

    const std::string text = graph_file_text(graphs, world.clock.computer_time());
    GraphState again;
    expect(read_graph_file(text, world.clock.computer_time(), again) == GraphFileOutcome::loaded);
    expect(graph_file_text(again, world.clock.computer_time()) == text);
    return 0;
}
