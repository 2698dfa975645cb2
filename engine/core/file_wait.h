#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// Waits, while other events run, until no other program has the file in use; returns at once for a free or a missing
/// file. There is no limit but the closing of the program (WaitCancelled). After a minute one line goes to the program
/// log.
void wait_until_free(Copy& copy, const std::string& name);

}  // namespace nimbry
