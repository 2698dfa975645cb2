#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs that look and change nothing. `arguments` is what stands behind the verb.

/// `boxes [NAME...] [--json]`: every box, or those named, as `name<TAB>text` lines (line ends within a text as " / ")
/// or as an array of objects.
[[nodiscard]] VerbStatus boxes_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `status [--json]`: copy_status().
[[nodiscard]] VerbStatus status_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `notices [--json]`: the last notices, oldest first, as `time<TAB>title<TAB>text` lines or as an array of objects.
[[nodiscard]] VerbStatus notices_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `panel [--once]`: panel_table(), shown again whenever it has changed for as long as the asker is there; with
/// `--once` printed once.
[[nodiscard]] VerbStatus panel_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
