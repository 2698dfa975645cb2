#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Takes the settings into force and opens what they ask for: reads the alarm and publishing settings and section
/// `Main` (and over it, in a client, what its server sent; in a first run after the setup window has been seen, where
/// there is a window), applies them to units, menu and captions, loads the graph store, opens the serial port or, in a
/// client, switches off what a client never does, and starts the network.
///
/// Runs at the start and again whenever the role or the settings as a whole have changed (a client's end of
/// synchronisation); it may be repeated. Bears the tag "initprog". Waits.
void initprog(Copy& copy);

}  // namespace nimbry
