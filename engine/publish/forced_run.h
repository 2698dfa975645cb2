#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// What a forced button of the internet dialog asks for.
enum class ForcedRun { ftp, mail, weather };

/// The button's control: "cmdForceFTP", "cmdForceMail", "cmdForceWU".
[[nodiscard]] const char* forced_button(ForcedRun which);

/// Runs it now, by the settings in force: `FtpForced` is set and `lblStatus` says which it is, the dialog is out of the
/// way, and all that is taken back on every way out. The status window says it too, for its moment. Whoever calls has
/// asked internet_refusal() first. Waits for the end.
void run_forced(Copy& copy, ForcedRun which);

/// Tells the person who pressed the button that it runs, in a routine that was reached by it; nothing in any other run,
/// nor in one that the forced one leads to.
void tell_forced_run(Copy& copy, ForcedRun which);

}  // namespace nimbry
