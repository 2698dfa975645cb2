#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// TimUI: once a minute in a copy that is fully started and not synchronising, writes the small text files for other
/// programs. May wait.
void write_small_files(Copy& copy);

}  // namespace nimbry
