#pragma once

#include <functional>
#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// Waits without a limit, for a file or a flag of our own. `nimbryctl status` names what is waited for, so that a copy
// that has come to a standstill says why. Each ends when the program closes (WaitCancelled).

/// Waits, while other events run, until `condition` holds; returns at once if it does already. `what` names it: a file,
/// or the flags.
void wait_for(Copy& copy, const std::string& what, const std::function<bool()>& condition);

/// Waits until no other program has the file in use; returns at once for a free or a missing file. After a minute one
/// line goes to the program log.
void wait_until_free(Copy& copy, const std::string& name);

/// Runs a save unless it is under way already, and returns when it has ended, one way or the other. The save holds
/// `saving`, its flag of the name `what`, as long as it works.
void save_first(Copy& copy, const std::string& what, const BusyFlag& saving, const std::function<void()>& save);

}  // namespace nimbry
