#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs that show the records and change nothing. `arguments` is what stands behind the verb.

/// `extremes`: a line for each record of the day, `caption<TAB>today<TAB>yesterday`, as the windows show it; then the
/// rain, with its days and its month.
[[nodiscard]] VerbStatus extremes_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `summary`: the text of the summary of the month in progress, made now and written nowhere. Fails where the month has
/// no almanac yet, and where it is damaged.
[[nodiscard]] VerbStatus summary_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
