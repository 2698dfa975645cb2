#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// What is done once for each train, after its last group: the end of the wind group's routine calls it. In this order:
/// clock test, records (records/extremes.h), the save every thirtieth cycle, timers, watch over uploads and
/// listener, what the first cycle switches on, menu, fault colours, uptime, caption, alarm mail. The boxes and flags
/// that it sets are named in the steps of process_cycle.cpp.
///
/// The first cycle of a run sets `fullystarted`; everything in the groups that needs it works from the second train on.
/// Clears `gotcomms` and `dworkingb`. May wait; `dworkingb` is then set. Bears the tag "process routine".
void processcycle(Copy& copy);

}  // namespace nimbry
