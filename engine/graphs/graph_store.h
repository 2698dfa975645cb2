#pragma once

#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

// The day of samples behind the graphs: kept in `grafdata.dat`, filled once a minute (graph_sampling.h).

/// Reads the store from its file, lets the time that has passed since the save pass over it, and draws. Without a file
/// of the last day that can be read the store is empty and `havegrafdata` false; panes that showed a day are emptied. A
/// file that is there but cannot be read at all is an unrecoverable error, tag "loadgrafdata".
void loadgrafdata(Copy& copy);

/// Writes the store to its file. `savingrafs` is clear on every way out, also when there is nothing to write: before
/// the first train, before the first drawing, and with less than two samples. A write that fails is one line in the
/// program log under `caller`, the tag of the routine that wants the save.
void savegrafdata(Copy& copy, std::string_view caller);

/// The menu entry "Reset graphs": asks, and on yes empties the store.
void resetgraphs(Copy& copy);

/// Deletes the file, empties the store, sets the scales afresh and draws. `havegrafdata` stays as it is: a server must
/// not turn its clients away for it.
void discard_graphs(Copy& copy);

/// A switch of the menu was clicked or a key set: the panes are shown or hidden, and drawn.
void apply_graph_switches(Copy& copy);

}  // namespace nimbry
