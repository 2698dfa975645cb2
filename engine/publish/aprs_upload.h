#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Reports to the APRS network, through the first server or, where that cannot be had within 20 seconds, the second:
/// logs in, sends the packet of `APRS.txt`, closes. Nothing without a call sign of three characters and a location.
///
/// With an interval below ten minutes every second call does nothing, the first one too. The packet's arrival is not
/// checked: the network confirms nothing. Waits.
void aprsupload(Copy& copy);

}  // namespace nimbry
