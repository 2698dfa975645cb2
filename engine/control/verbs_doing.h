#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs around the settings, the log and the exit. `arguments` is what stands behind the verb.

/// `get SECTION KEY`: prints the value in force, the default for a key that is not in the file. Refuses a key that
/// Nimbry does not know.
[[nodiscard]] VerbStatus get_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `set SECTION KEY VALUE`: writes the key and takes its section into the running copy. What a dialog's accept button
/// does beyond that (opening a port anew, converting what is shown) does not happen. Refuses a key that Nimbry does not
/// know; fails when the file cannot be written, and the value is in force all the same.
[[nodiscard]] VerbStatus set_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `prune-log [--yes]`: the menu entry "Prune Program Log". Without `--yes` the question is told and nothing is done.
[[nodiscard]] VerbStatus prune_log_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `stop`: the menu's exit; returns at its end.
[[nodiscard]] VerbStatus stop_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
