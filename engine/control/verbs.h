#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/core/copy.h"

namespace nimbry {

/// What a verb ends with; nimbryctl exits with it.
enum class VerbStatus : int {
    done = 0,
    failed = 1,     ///< refused or failed; the asker was told why
    bad_usage = 2,  ///< the arguments are not the verb's
};

/// Does what a request asks for: a verb and its arguments, which are texts of the engine. Runs as an event of the copy
/// (core/event.h), in a conversation of its own, and may wait. verb_list.h names the verbs, docs/nimbryctl.md shows
/// them.
[[nodiscard]] VerbStatus answer_request(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
