#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

/// `apply [DIALOG]`: does what the dialog's accept button does, with the settings that are in force; without a name all
/// dialogs, one after the other. What the dialog would refuse is refused with its message and changes nothing. In a
/// client the dialogs of what its server gives it are refused, and passed over where all are meant.
[[nodiscard]] VerbStatus apply_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
