#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

/// `graph NAME [--svg FILE] [--size WxH]`: one of the six graphs as an SVG of that size, written to FILE by the copy
/// (a name without a leading separator lies in the copy's folder), or printed. NAME is one of graph_name(). A size that
/// no picture can have is bad usage.
[[nodiscard]] VerbStatus graph_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
