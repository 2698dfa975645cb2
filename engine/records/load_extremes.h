#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Starts the day's record: today's displays blank, the reset values, then loadextremes(). In the first cycle that
/// updates.
void resetextremes(Copy& copy, bool units_changed = false);

/// Shows the records in the units now in force: saves the day and loads both files again. What is held of today stands
/// all the same, for a day with a silent sensor is in no file. Clears `unitschanged`. May wait.
void reload_in_new_units(Copy& copy);

/// Reads yesterday's file and today's, in this order, and shows both. Yesterday's counts while it is less than 86380 s
/// old, today's while it is not more than 86380 s old; a stale one is as good as none. If the changeover fell into the
/// time that the program was off (today's file is older than it by more than 10 s, the station's clock past it by more
/// than 61 s), it is done now. Then the graphs are loaded. Does nothing before the first cycle, or while an error of a
/// record routine stands.
///
/// `units_changed`: after a change of units the column and units lines go to the weather log, the graphs start afresh,
/// and no changeover is made up for. A file that is too short ends the program with a box; any other damage bears the
/// tag "ResYesterday". A damaged file is renamed to `.bad`, which the program log tells, and is as good as none from
/// then on: the next start goes without it. May wait.
void loadextremes(Copy& copy, bool units_changed = false);

}  // namespace nimbry
