#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// TimComFail, once a minute in a copy that has a station: notices that no data comes.
///
///   `Rflagb`   `ccheckflagb`   the tick
///   clear      any             reports: no cycle has been completed since the port was opened
///   set        clear           sets `ccheckflagb`, which any byte clears again
///   set        set             reports, and leaves it set: every tick reports until a byte comes
///
/// So once data has flowed, a report takes 60 to 120 seconds of silence. A tick that comes while the line is not
/// expected to be heard (a synchronisation, a changeover, an upload or a mail under way) changes nothing. In a client
/// the timer stops itself. Bears the tag "TimComFail".
void watch_for_silence(Copy& copy);

/// Tells that no data comes: tone, balloon at the wind chill's box, line in the program log.
void commfail(Copy& copy);

}  // namespace nimbry
