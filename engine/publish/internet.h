#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// The line to the internet, as every upload asks for it. Dialling and hanging up are the modem's; where a system has no
// dial-up of its own, as here, both do nothing and the line is there or not.

/// True when the machine is on a network, or when `host`, the server about to be used, is this machine itself.
[[nodiscard]] bool isconnected(const Copy& copy, const std::string& host);

/// Makes the dial-up connection. Without dial-up in the system it does nothing: `ProgramDialled` stays as it is.
void dial(Copy& copy);

/// Ends the dial-up connection if this program has dialled it; a line that others have dialled stays up.
void hangup(Copy& copy);

/// The line for an upload to `host`: tested, dialled when there is none and the user allows it, and tested again. True
/// when it is there.
[[nodiscard]] bool go_online(Copy& copy, const std::string& host);

/// An upload is over, its busy flag clear: hangs up if the user wants it and no other upload runs or waits for the
/// line.
void leave_line(Copy& copy);

}  // namespace nimbry
