#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Once a minute, from the graph tick of the cycle: stores a sample of every series, shows the highest gust of the last
/// hour, saves the store, looks after the rain since midnight, and draws. Does nothing while another sample is being
/// taken. Tag "updategraphs". May wait.
void updategraphs(Copy& copy);

/// GrFailTimer: nine ticks after a store was loaded that nothing has drawn, a sample is taken and drawn.
void refresh_missing_graphs(Copy& copy);

}  // namespace nimbry
