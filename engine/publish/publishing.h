#pragma once

#include "engine/core/copy.h"
#include "engine/publish/ftp_upload.h"
#include "engine/publish/ftp_watchdog.h"
#include "engine/publish/mail.h"
#include "engine/publish/mail_body.h"
#include "engine/publish/weather_services.h"

namespace nimbry {

// What goes out to the world, as the cycle, the timers and the changeover call for it: the headers above. None of it
// runs in a client. Here is what belongs to all of it.

/// Takes the settings of section `FTP` into PublishState.
void getFTP(Copy& copy);

/// Refreshes the position text of the packet for APRS.
void update_location_text(Copy& copy);

/// Asks whether to hang up, where a dial-up connection of ours is up. Waits for the answer.
void offer_to_hang_up(Copy& copy);

}  // namespace nimbry
