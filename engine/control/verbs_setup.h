#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs that do what a setup dialog does, for a copy without a window. `arguments` is what stands behind the verb.

/// What a client shows counts as its server's does: true, and the asker is told, when this copy is one. `what` is
/// "units".
[[nodiscard]] bool refused_to_client(const Copy& copy, const std::string& what, Asker& asker);

/// `location LAT LON`: the location dialog with decimal degrees, south and west negative; `location none` takes the
/// location away. Refused with the dialog's own message, and on a copy that takes its data from another one, which
/// gives it the location too.
[[nodiscard]] VerbStatus location_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `units [--temp C|F] [--baro mB|hPa|inHg] [--rain mm|in] [--wind ms|kph|mph|knots] [--rollover first|last]
/// [--newchill yes|no] [--yes]`: the units dialog with these options changed. What the dialog warns of when it opens is
/// told before a change of units, which then needs `--yes`; a refused rollover changes nothing.
[[nodiscard]] VerbStatus units_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `changeover midnight|9|10 [--yes]`: the dialog's options for the end of the weather day. Without `--yes` the
/// question is told and nothing is done.
[[nodiscard]] VerbStatus changeover_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
