#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// The weather log: `nimbry.dat`, a line of current readings every `LogMin` minutes, renamed at the month's end to
// `log<Mon><YY>.csv`; a twin of it in the local-save folder. The bytes are in docs/formats/data-log.md. A write or
// rename that fails is told in the program log and in a notice, costs its own file's line and nothing else, and logging
// goes on at the next interval.

/// The weather log of the month in progress.
inline constexpr std::string_view log_file = "nimbry.dat";

/// TimLog: once a minute, looks whether a line of the weather log is due. A client never logs, and nothing is logged
/// during a changeover. May wait.
void weather_log_minute(Copy& copy);

/// At the start: ends the last line of the log and of its twin, where a power cut has torn it, so that the next entry
/// is a line of its own. A server's only: a client never logs. Throws nothing: see above.
void end_torn_line(Copy& copy);

/// Writes one entry to the log and then to its twin, with a file's head if it is new, and closes the month when its
/// last entry was written, or its first day has come without that. Throws nothing: see above.
void writelog(Copy& copy);

/// Renames the log to the month's archive, in the local-save folder too, and says so in the program log. Never
/// overwrites an archive: throws RunTimeError (exists).
void rolllog(Copy& copy);

/// After a change of units: column line and units line, appended to a log that is there, and to its twin.
void log_units_line(Copy& copy);

/// The head of a new log, with the units in force.
[[nodiscard]] std::string data_log_head(const Units& units);

/// The line of units alone, without its end.
[[nodiscard]] std::string data_log_units(const Units& units);

}  // namespace nimbry
