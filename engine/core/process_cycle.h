#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// What is done once for each train, after its last group: the end of the wind group's routine calls it. Bears the tag
/// "process routine".
void processcycle(Copy& copy);

}  // namespace nimbry
