#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// Rain of the day, of the last hour and since midnight, all from the station's one counter of whole millimetres. The
// counter only grows, until somebody resets the station. Texts on the panel are in the rain unit, state is in mm.

/// The station's counter as the last train gave it, mm, as the single that all comparisons are made with. 0 before the
/// first train. A letter E among its digits can spell an exponent: 1e9 is the most it can say.
[[nodiscard]] float rain_counter(const Readings& readings);

/// Once a cycle, faulty rain sensor or not, in `extremes`: sets `rainnow`, `rainatchange` and `raintoday`, shows the
/// rain of the day and asks its alarm. Clears `firstrun`.
///
/// In the first cycle the day's base `rainatchange` is the one that yesterday's file brought, if that was good; else
/// it is chosen so that the total read from today's file stands. When the counter falls (a reset), the base becomes
/// `raintoday` + `rainnow`, once for each fall, so the day's total turns negative and grows from there to the next
/// changeover.
void rain_of_the_day(Copy& copy);

/// Once a minute, from the graph tick: the minute's rain goes into the ring, and the ring's sum, the rain of the last
/// 60 minutes, is shown. The first call only takes the counter as it stands. A counter that has fallen counts whole.
void rain_last_hour(Copy& copy);

/// Shows the ring's sum again, in the unit in force. Nothing before the first call of rain_last_hour().
void show_rain_last_hour(WeatherState& state);

/// The rain of the last hour as uploads give it: "r" and hundredths of an inch, three digits at least; "r000" for none.
[[nodiscard]] std::string last_hour_tag(float mm);

/// At station time 00:00, once, in both roles, last in `extremes` and from the graph's update: appends the station time
/// and the counter to `rnslm.dat`, two lines. Waits while another program has the file in use. Throws RunTimeError when
/// it cannot be written.
void midnight_rain_file(Copy& copy);

/// The rain since the last midnight, mm, also kept as `RainSinceMidnight`. It is `raintoday` where the weather day ends
/// at midnight; else the counter less the last one that `rnslm.dat` gives for the station's date (the counter itself
/// where that would be negative); without such an entry the counter less what it was in this run's first cycle of the
/// date.
float rain_since_midnight(Copy& copy);

}  // namespace nimbry
