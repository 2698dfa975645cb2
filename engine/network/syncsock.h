#pragma once

#include <memory>
#include <string_view>

#include "engine/core/copy.h"
#include "engine/ports/streams.h"

namespace nimbry {

// `syncsock`: the one TCP socket of the synchronisation, in either role a listener or a connection.

/// What it is doing. `closed` when there is neither listener nor connection, and when the peer has closed.
[[nodiscard]] StreamState syncstate(const NetworkState& network);

/// Sends one text over `connection`, in one write, and returns when the system has taken it all or after 1.01 s. A
/// failure is a notice and a line in the program log, and goes no further. True when there was none. May wait.
bool SendData(Copy& copy, const std::shared_ptr<Stream>& connection, std::string_view text);

/// Takes a connection for the current one; bytes of an earlier one are forgotten.
void take_connection(NetworkState& network, std::shared_ptr<Stream> connection);

/// Closes the listener and the connection; what was sent may still go out, for a second.
void close_syncsock(Copy& copy);

/// The same for the program's end: at once.
void drop_syncsock(NetworkState& network);

/// Something has happened at a stream: takes who connects, obeys what has arrived, and sees who has gone. A connection
/// that is not the current one any more is no concern of it. Never waits: what takes time gets a conversation of its
/// own.
void serve_syncsock(Copy& copy);

/// The receiver has waited long enough for the rest of a command.
void settle_held_bytes(Copy& copy);

}  // namespace nimbry
