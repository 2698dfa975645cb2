#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs that do what a setup dialog does, for a copy without a window. `arguments` is what stands behind the verb.

/// `location LAT LON`: the location dialog with decimal degrees, south and west negative; `location none` takes the
/// location away. Refused with the dialog's own message, and on a copy that takes its data from another one, which
/// gives it the location too.
[[nodiscard]] VerbStatus location_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
