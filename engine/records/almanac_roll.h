#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Archives the almanac when the month is over, judged `alRoll` minutes ahead of the station's clock, or late, when it
/// holds more rows than the day of the month; tells in the program log how it went. Clears `alarchiving` when there was
/// nothing to archive or it failed. May wait for uploads and mails.
void alRoll(Copy& copy);

}  // namespace nimbry
