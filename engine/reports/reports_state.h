#pragma once

#include <set>
#include <string>

#include "engine/core/busy_flag.h"

namespace nimbry {

/// The generation of pages, mails and small files.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct ReportsState {
    BusyFlag htmlGenBusy;      ///< pages are being made
    BusyFlag mailGenBusy;      ///< the body of a mail is being made: the gust tags show the gust of a wind alarm
    BusyFlag genuibusy;        ///< the small files of the weather string are being written
    BusyFlag LocalSaveBusy;    ///< finished files are being put into the user's folder
    bool IsAlarmMail = false;  ///< the mail being made is the alarm's: its heading goes into the body by itself
    bool new_data = false;     ///< (kept) a cycle has run since the last generation

    std::set<std::string> unreadable;  ///< templates that could not be read, and have been told of

    std::string short_text;  ///< the weather in three lines, while a mail is being made; else empty
    std::string mail_body;   ///< the mail as far as it is made
};

}  // namespace nimbry
