#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// Opening the serial port, and opening it again when it was lost. Handling what arrives on it is station/oncomm.h.

/// What the box of a failed open says for an error number.
[[nodiscard]] std::string port_failure_text(int number);

/// The device of this run: what the program was started with, else that of the chosen port; empty in a client.
[[nodiscard]] std::string device_of_this_run(const WeatherState& state);

/// Closes the port, lets no receive event through any more, and ends every attempt to open it that is still going on.
void close_serial_port(Copy& copy);

/// Opens the port of this run twice with half a second between, as some adapters deliver nothing after their first
/// open; empties it; then lets receive events through (`SerComReady`), clears `Rflagb` and `ccheckflagb` and starts
/// TimComFail.
///
/// If an open fails and there is a window, a box names the device and offers to try the same open again, or another
/// port from the communications dialog; Cancel leaves a line in the program log and ends the program at once, and
/// WaitCancelled is thrown. Without a window a notice and the program log tell of the failure once, and the port is
/// tried again after 1, 2, 5 and 10 seconds and then every 30, for ever; this function then returns after the first
/// failure.
///
/// As long as the port is tried again, `PortTrouble` and the tip of the status label say why. A later call takes over
/// from one that is still trying, or whose box is still unanswered: no answer counts then.
void open_serial_port(Copy& copy);

/// The device of the open port has gone away: called by OnComm half a second after the fault. Tells it in a notice and
/// logs " Serial port lost", and tries to open it by the same schedule, without a box in either program, until it can
/// tell and log " Serial port opened again". Returns at its first wait.
void line_lost(Copy& copy);

}  // namespace nimbry
