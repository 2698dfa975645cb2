#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// The five groups of a train and the lone wind group: from the raw texts and digit tables to readings, boxes and
// alarms. Each runs under the tag of its name ("8F group" .. "BF group", "CF Group", "WG group"). Before the first
// cycle (`fullystarted` clear) only the clock is read, and group_cf still ends with the cycle.

/// Clock and humidity. Sets `HaveValidDate`; when it stays false, nothing else of the train may be used.
void group_8f(Copy& copy);

/// Indoor and outdoor temperature, heat index.
void group_9f(Copy& copy);

/// Barometer, trend, dew point and what follows from it, weather picture. The one digit value that is an error: an
/// outdoor humidity of 0 has no dew point and ends the program (invalid_argument), though a damaged frame can say it.
void group_af(Copy& copy);

/// Rain rate and the station's rain counter.
void group_bf(Copy& copy);

/// Wind of a train. Ends by running the cycle (core/process_cycle.h), which clears `dworkingb` and may wait.
void group_cf(Copy& copy);

/// Wind of a lone group, from `DigitsCFLone`; only once a cycle has been completed. Ends by clearing `dworkingb`.
void group_wg(Copy& copy);

}  // namespace nimbry
