#pragma once

#include "engine/ports/clock.h"
#include "engine/ports/datagrams.h"
#include "engine/ports/desktop.h"
#include "engine/ports/files.h"
#include "engine/ports/notices.h"
#include "engine/ports/pauses.h"
#include "engine/ports/serial_line.h"
#include "engine/ports/streams.h"
#include "engine/ports/transfers.h"

namespace nimbry {

/// Everything that a running copy asks of the world, for the few routines that steer the whole (start-up, exits, the
/// cycle). A routine that needs one port takes that port. The program owns the ports; they outlive the engine.
struct Ports {
    Clock& clock;
    Pauses& pauses;
    Files& files;
    SerialLine& line;
    Datagrams& datasock;
    Streams& streams;
    Notices& notices;
    Sounds& sounds;
    Desktop& desktop;
    Transfers& transfers;
};

}  // namespace nimbry
