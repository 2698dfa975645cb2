#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Ends the weather day: the finished day becomes yesterday's file, a row goes to the almanac, the record is reset, the
/// month's report is made, and the user's `nimbryco.bat` runs. In both roles. A first error costs only the step that it
/// happened in; a second is fatal under the tag "DoChangeover". May wait.
void DoChangeover(Copy& copy);

/// Puts a copy of a file beside it under another name, over an older copy; nothing for a missing file. Waits while it
/// is in use. Throws RunTimeError.
void back_up(Copy& copy, const std::string& name, const std::string& backup);

}  // namespace nimbry
