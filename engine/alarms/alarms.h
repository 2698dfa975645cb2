#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Takes the thresholds and switches of section `Alarms` into the state.
void getalarms(Copy& copy);

/// TimAlarm: the sound and the colours of an alarm have stood long enough.
void end_alarm(Copy& copy);

}  // namespace nimbry
