#pragma once

#include "programs/nimbry-station/line.h"
#include "programs/nimbry-station/patience.h"
#include "programs/nimbry-station/source.h"

namespace nimbry::simulator {

/// Does a source's deeds on a line, each at its time and a sent byte every byte_time, until the user ends the program.
/// When the source has nothing more to tell the line stays as it is. Throws what the line throws.
void perform(Source& source, Line& line, Patience& patience);

}  // namespace nimbry::simulator
