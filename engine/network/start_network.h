#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Opens the sockets of the configured role; the last act of initprog, each time it runs. A client binds
/// client_udp_port, also when it was a server before: being a client wins over being a server. A server binds
/// server_udp_port and opens its listener. A copy with neither role binds nothing. A second run closes and binds again,
/// which throws away what had queued up; a client's synchronisation goes on through it.
///
/// A client's port that is taken is noted in the program log once and tried again every ten seconds. A server's is
/// tried again with each group it sends. Does nothing while the program closes.
void startnetwork(Copy& copy);

/// Binds `DATAsock` as a client; where the port is taken, in ten seconds, again and again.
void bind_client_port(Copy& copy);

/// Binds `DATAsock` as a server. False when the port is taken.
bool bind_server_port(Copy& copy);

/// Opens a server's listener for clients that synchronise; an open one, and a connection, is closed first. Where that
/// fails, the program log says so, once until it works; the cycle tries again.
void open_sync_listener(Copy& copy);

}  // namespace nimbry
