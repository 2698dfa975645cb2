#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/graphs/graph_state.h"
#include "engine/ports/clock.h"

namespace nimbry {

// The bytes of `grafdata.dat`, 63 + 11 * (windsamples + 1) lines. docs/formats/graph-store.md has the table.

inline constexpr std::string_view graph_file = "grafdata.dat";

/// The whole file, saved at `now`. Only rows that have changed since they were last asked for are formatted anew.
[[nodiscard]] std::string graph_file_text(const GraphState& graphs, CivilTime now);

/// What became of a file that was read.
enum class GraphFileOutcome {
    loaded,
    bad_date,         ///< its first line is no date
    too_old,          ///< saved more than 86400 seconds ago
    from_the_future,  ///< saved later than `now`
    bad_count,        ///< a count is missing, no number, or not one that the rows can have
    empty,            ///< it holds no sample
    cut_short,        ///< a line is missing
};

/// Reads a file into `graphs` and lets its age pass over it (GraphRows::age()). A line that should hold a number and
/// does not leaves the value that stands there. After any outcome but `loaded` the store is empty. Rows 0 to 9 of
/// `gscale` are to be set again (setgraphscales()).
GraphFileOutcome read_graph_file(std::string_view text, CivilTime now, GraphState& graphs);

/// Empties the store and all that came from its file: every stamp, value and count, `gscale`, `grmax` and `grafage`. No
/// sample can be stored before setgraphscales() has run.
void clear_store(GraphState& graphs);

/// The number of a line, blanks around it ignored; nothing when it is none, or none that a single can hold.
///   line_number(" 12.5 ") = 12.5   line_number("-.5") = -0.5   line_number("12,5") = nothing
[[nodiscard]] std::optional<float> line_number(std::string_view line);

}  // namespace nimbry
