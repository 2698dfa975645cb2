#pragma once

#include <functional>

#include "programs/nimbry-station/line.h"
#include "programs/nimbry-station/patience.h"
#include "programs/nimbry-station/source.h"

namespace nimbry::simulator {

/// Does a source's deeds on a line, each at its time and its bytes at their pace, until the user ends the program. When
/// the source has nothing more to tell the line stays as it is. `done` hears of each deed after it, with the time when
/// it really began. Throws what line and `done` throw.
void perform(Source& source, Line& line, Patience& patience, const std::function<void(const Deed&)>& done);

}  // namespace nimbry::simulator
