#pragma once

#include "engine/core/copy.h"
#include "engine/core/run_time_error.h"

namespace nimbry {

// The ways out of the program. Each sets `ProgramClosing`, ends every standing wait but the two saves, and at its end
// sets `gone`. Whatever calls for an exit while one is running is passed over. A step of an exit that fails is passed
// over too: the later steps still run.

/// The menu's exit: click, graph save and save of the day's extremes (unless an error is being reported), stop line
/// with "normal exit", question about the modem, port and socket closed, timers stopped. Waits.
void menu_exit(Copy& copy);

/// The end that the system or the window's close mark asks for: the same without the click and the question, and with
/// "forced exit (Windows closing)". The status window, if it shows, is closed first.
void window_close(Copy& copy);

/// Ends at once: no saves, no stop line. For the person who cancels the box of a port that cannot be opened.
void end_at_once(Copy& copy);

/// Tells of an error that a routine could not go on from, and leaves by the menu's exit without saves. The stop line
/// ends in the sentence that was shown. A second error, and one during an exit, is passed over. Waits for the box.
void report_unrecoverable(Copy& copy, const UnrecoverableError& error);

}  // namespace nimbry
