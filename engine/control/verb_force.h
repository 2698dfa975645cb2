#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

/// `force ftp|mail|weather`: what the forced buttons of the internet dialog do, with the settings in force. Refused
/// with the dialog's own message, and on a copy that takes its data from another one, which publishes nothing. Done
/// when all of it went well; else the asker is told why not. Waits for the end.
[[nodiscard]] VerbStatus force_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
