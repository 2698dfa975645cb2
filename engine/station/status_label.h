#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// What the main window's header says about the line: the status label and the activity lamp.

/// The label of a line that works: "Program Starting" until the graph store is in use, then "Current Conditions".
void show_working_status(WeatherState& state);

/// Data has come in: the label as above, the lamp red, and `Timer2` started, which ends the flash.
void show_data_arrival(Copy& copy);

/// The flash is over: the lamp dark, the label as above.
void end_lamp_flash(WeatherState& state);

/// The line's device has gone: its error word in the label, which no flash that is still to end takes away.
void show_lost_line(Copy& copy);

/// A fault of the line: its error word in the label.
void show_line_error(WeatherState& state);

}  // namespace nimbry
