#pragma once

#include <string>

namespace nimbry {

/// Where the roles of server and client stand.
struct NetworkState {
    std::string LocalIP;         ///< the own address that all sockets are bound to; empty: all of them, which is usual
    bool retrying_bind = false;  ///< the client's port was taken and is being tried again
    bool syncing = false;        ///< a client is fetching the server's files
    bool listening = false;      ///< a server's listener is open and nobody is connected (socket state 2)
};

}  // namespace nimbry
