#pragma once

#include "engine/derived/dates.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/graphs/graph_scales.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {

/// A copy whose boxes show a plain afternoon.
struct Sampling : BareCopy {
    Sampling() {
        state.run.fullystarted = true;
        state.readings.dtvar = *civil_time({2026, 10, 5, 14, 2, 33});
        state.readings.rdattime = "14:02:33";
        setgraphscales(state);
        const char* texts[] = {"+12.3 \260C",  "+3.3 \260C", "54 %",         " 11.2 km/h",  " 1013 mB",
                               " 2.5 mm/hour", " 15.1 km/h", "Gust 225\xB0", "+21.5 \260C", "45 %"};
        for (std::size_t s = 0; s < 10; ++s) state.panel.Text2[s].text = texts[s];
        state.readings.wstempsng = 18.4;
    }
    void sample() { updategraphs(copy); }
    [[nodiscard]] float last(int s) const { return rows.gdata(s, rows.windsamples()); }
    void box(int s, const char* text) { state.panel.Text2[static_cast<std::size_t>(s)].text = text; }

    GraphRows& rows = state.graphs.rows;
};

}  // namespace nimbry::test
