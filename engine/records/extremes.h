#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// The records of the weather day, once a cycle, in both roles: sun texts, the day's extremes, rain of the day,
/// changeover, scheduled mails, the once-a-minute graph tick with the rain of the last hour, and the counter at
/// midnight.
///
/// Does nothing before the first cycle has been completed, or while an error of a record routine stands
/// (record_step.h). An error costs its step and no later cycle: at the end of the cycle it is forgotten. Bears the tag
/// "extremes". May wait.
void extremes(Copy& copy);

}  // namespace nimbry
