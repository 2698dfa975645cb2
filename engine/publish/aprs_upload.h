#pragma once

#include <cstddef>

#include "engine/core/copy.h"

namespace nimbry {

/// Letters of a call sign at least.
inline constexpr std::size_t shortest_call = 3;

/// Minutes between two packets that the network wants.
inline constexpr int least_aprs_interval = 10;

/// Reports to the APRS network, through the first server or, where that cannot be had within 20 seconds, the second:
/// logs in, sends the packet of `APRS.txt`, closes. Nothing without a call sign of three characters and a location.
///
/// With an interval below ten minutes every second call does nothing, the first one too. The packet's arrival is not
/// checked: the network confirms nothing. Waits.
void aprsupload(Copy& copy);

}  // namespace nimbry
