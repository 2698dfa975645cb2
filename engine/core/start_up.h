#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// The program's entry, before any window shows: reads the configuration and stamps it. Where the file cannot be read,
/// a balloon says so and every setting has its default.
void program_entry(Copy& copy);

/// The load of the main window: resets everything shown, writes the start line to the program log and the start time to
/// the configuration, runs initprog, and shows the start time. Bears the tag "Load". Waits.
void load_main_window(Copy& copy);

/// Holds the splash for five seconds after the load. Bytes that arrive until its end are thrown away. Waits.
void hold_splash(Copy& copy);

}  // namespace nimbry
