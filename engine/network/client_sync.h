#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// Fetches the server's settings and running files, so that a client starts where its server stands: asks for a
/// connection, waits until the server is free, fetches six files, says goodbye, and takes everything into force with
/// initprog. The caller has set `dworkingb`, and clears it. Waits, five minutes at worst.
///
/// `server` is the address that the first datagram came from. Without a connection, without a free server, when the
/// connection is lost and after an error the client goes on with the files that it has; `sync_result` says how it
/// ended. A file is replaced only by one that has arrived whole.
void synchronise(Copy& copy, const std::string& server);

}  // namespace nimbry
