#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Datagrams have arrived at a client: takes all that there are, one after the other, and lets other events run after
/// every hundred. The first of the run, whatever it holds, is thrown away and begins the synchronisation with its
/// sender (client_sync.h). Every later one shows that data comes in, and goes through the groups as a frame of the line
/// would: a first byte 8F is a train, CF a lone wind group, whoever sent it. Others, and those of less than 27 or more
/// than 143 bytes, are dropped.
///
/// While a group is worked on, a synchronisation, a changeover or a graph sample runs, and while the splash shows,
/// datagrams stay where they are; they are come back to. May wait.
void take_datagrams(Copy& copy);

}  // namespace nimbry
