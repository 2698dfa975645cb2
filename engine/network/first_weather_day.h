#pragma once

#include "engine/core/main_settings.h"
#include "engine/ports/clock.h"

namespace nimbry {

/// True while a server may have no almanac because it has just been archived: on the first weather day of a month, by
/// the computer's clock. With a roll on the month's last day, also on that weather day from its own roll on.
///   9.00am, roll 5:   day 1 09:00:00 <= now <= day 2 08:59:59
///   midnight, roll 5: day 1 00:00:00 <= now <= day 1 23:59:59
[[nodiscard]] bool almanac_may_be_archived(const MainSettings& settings, CivilTime now);

}  // namespace nimbry
