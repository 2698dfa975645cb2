#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// The device of the open port has gone away: sees to it that the port is opened again. Called by OnComm half a second after
/// the fault, in a conversation that may wait.
void line_lost(Copy& copy);

}  // namespace nimbry
