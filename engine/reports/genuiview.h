#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// Writes `nimbryUI.txt` (date and time, then the weather string), unless another program has it open, and the packet
/// for APRS, `APRS.txt`. `genuibusy` is set meanwhile. Bears the tag "genuiview".
void genuiview(Copy& copy);

/// "Oct 5 2026 14:05": the station's.
[[nodiscard]] std::string ui_moment(const Readings& readings);

}  // namespace nimbry
