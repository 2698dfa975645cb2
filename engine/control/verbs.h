#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verb_status.h"
#include "engine/core/copy.h"

namespace nimbry {

/// Does what a request asks for: a verb and its arguments, which are texts of the engine. Runs as an event of the copy
/// (core/event.h), in a conversation of its own, and may wait. verb_list.h names the verbs, docs/nimbryctl.md shows
/// them.
[[nodiscard]] VerbStatus answer_request(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
