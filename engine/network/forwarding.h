#pragma once

#include <cstdint>

#include "engine/core/copy.h"

namespace nimbry {

inline constexpr std::uint16_t server_udp_port = 60137;  ///< a server sends from here
inline constexpr std::uint16_t client_udp_port = 60135;  ///< a client listens here

/// Sends a frame, as it came from the station, to every client of the list, in the list's order, one datagram each.
/// Only a server does; a client never, whatever `bcastnet` says, and nobody once the program is closing. `DATAsock` is
/// bound to server_udp_port if it is not open.
///
/// An address that cannot be sent to does not keep the frame from the others. One notice a frame tells of the first
/// failure, and of the entry that it is about.
void forwardgroup(Copy& copy, const Bytes& frame);

}  // namespace nimbry
