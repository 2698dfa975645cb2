#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// A mail goes out in a conversation of its own, so that no server can hold up the weather. `emailbusy` is set from
// before its text is made (mail_body.h) until the server has answered, and open setup windows are locked meanwhile.

/// Sends a mail if an entry of the mail schedule is the station's hour and minute, in the first ten seconds of that
/// minute, once. The pages are made before it goes, for those who attach them, and the monthly summary where
/// `MailReport` asks for it.
void send_scheduled_mails(Copy& copy);

/// Composes the alarm mail of `AlarmReason` and sends it. May wait.
void send_alarm_mail(Copy& copy);

/// Sends the mail that gencomail() made, once for every entry of the mail schedule that holds "CHANGE"; true when there
/// is one. The only mail that goes while a changeover runs.
bool send_changeover_mails(Copy& copy);

/// Forgets a changeover mail that nobody sent and that does not wait for the line. At the end of a changeover.
void drop_unsent_changeover_mail(Copy& copy);

/// Sends the mail that is pending, or makes and sends that of the schedule. Put off with `revisitmail` while a
/// changeover or an upload runs; nothing in a client or while another mail goes out. An upload by FTP follows where
/// `ChkDoEmailToo` asks for it or one was put off. Without a line nothing is made, and a pending mail is dropped. May
/// wait.
void uploadmail(Copy& copy);

}  // namespace nimbry
