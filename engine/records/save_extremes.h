#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Writes the extremes of the day to their file. The caller has set `tdaysaving`; it is clear again on every way out,
/// also when there is nothing to write yet. May wait.
void SaveExtremes(Copy& copy);

}  // namespace nimbry
