#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_store.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {

/// A copy that runs and has drawn, with `count` samples up to now.
struct StoredDay : BareCopy {
    explicit StoredDay(int count = 0) {
        state.run.fullystarted = true;
        state.readings.dtvar = clock.computer_time() - std::chrono::seconds{20};
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
        savegrafdata(copy, caller);
        EXPECT_FALSE(state.run.savingrafs) << "on every way out";
    }
    [[nodiscard]] std::string file() const { return files.contents("grafdata.dat"); }
    /// Another copy's file, as this one would have saved it.
    [[nodiscard]] std::string saved_file() const { return graph_file_text(graphs, clock.computer_time()); }
};

}  // namespace nimbry::test
