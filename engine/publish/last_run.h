#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// How a run that went well is noted.
inline constexpr const char* run_went_well = "ok";

/// Notes that a run has ended now, and how: for `nimbryctl status`, and for whoever asked for it.
void note_run(Copy& copy, LastRun& run, std::string result);

}  // namespace nimbry
