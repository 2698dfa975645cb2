#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Writes the extremes of the day to their file, unless there is nothing to write yet. `tdaysaving` is clear
/// afterwards, on every way out. Throws RunTimeError.
void SaveExtremes(Copy& copy);

}  // namespace nimbry
