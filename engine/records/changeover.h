#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Once a cycle: ends the weather day when its hour has come, by the station's clock:
///
///   early      the last ten seconds before the hour, whatever `ChangeTriggered` says (two trains in them make two
///              changeovers: one train comes every ten seconds)
///   catch-up   the first minute of the hour, only while `ChangeTriggered` is clear
///
/// `ChangeTriggered` falls 61 s after the change instant, one second past the hour. While a changeover runs
/// `changebusy` is set, but in a client, which has no windows to lock and no mail to send either. Bears the tag
/// "MailChangeover". May wait.
void MailChangeover(Copy& copy);

/// The change instant on the date of `now`: one second past midnight, 9.00am or 10.00am.
[[nodiscard]] CivilTime changeover_instant(const MainSettings& settings, CivilTime now);

}  // namespace nimbry
