#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// The day of samples behind the graphs.

/// Reads the store from its file at the start; sets `havegrafdata` when there is one that can be used.
void loadgrafdata(Copy& copy);

/// Writes the store to its file. The caller has set `savingrafs`; it is clear again on every way out, also when there
/// is nothing to write. May wait.
void savegrafdata(Copy& copy);

/// Once a minute, from the graph tick of the cycle: stores a sample and draws. May wait.
void updategraphs(Copy& copy);

/// GrFailTimer: gives a copy that has just started its first picture when no minute has brought one.
void refresh_missing_graphs(Copy& copy);

}  // namespace nimbry
