#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// What goes out to the world, as the cycle and the timers call for it. None of it runs in a client.

/// Takes the settings of section `FTP` into PublishState.
void getFTP(Copy& copy);

/// TimerFTP: looks whether an upload is due.
void ftp_schedule(Copy& copy);

/// A tick of TimFTPTOT, the watchdog (ftp_watchdog.h). The one that is too much ends the upload: everybody who waits
/// for its server gives up, and the user is told.
void ftp_time_out(Copy& copy);

/// Breaks off the upload that is under way and clears the marks of all retries. `uloadftpbusy` is clear once it has
/// returned, which takes a moment.
void cancel_ftp(Copy& copy);

/// timWU: looks whether the weather services are due.
void weather_services(Copy& copy);

/// Refreshes the position text of the packet for APRS.
void update_location_text(Copy& copy);

// A mail goes out in a conversation of its own, so that no server can hold up the weather. `emailbusy` is set from
// before its text is made until the server has answered, and open setup windows are locked meanwhile.

/// Sends a mail if an entry of the mail schedule is the station's hour and minute, in the first ten seconds of that
/// minute, once. The pages are made before it goes, for those who attach them, and the monthly summary where
/// `MailReport` asks for it.
void send_scheduled_mails(Copy& copy);

/// Composes the alarm mail of `AlarmReason` and sends it. May wait.
void send_alarm_mail(Copy& copy);

/// Composes the changeover mail, before the day is closed.
void gencomail(Copy& copy);

/// Sends the mail that gencomail() made, once for every entry of the mail schedule that holds "CHANGE"; true when there
/// is one. The only mail that goes while a changeover runs.
bool send_changeover_mails(Copy& copy);

/// Forgets a changeover mail that nobody sent and that does not wait for the line. At the end of a changeover.
void drop_unsent_changeover_mail(Copy& copy);

/// What an upload follows from.
enum class UploadCause {
    due,         ///< the schedule, a retry, the forced button
    after_mail,  ///< a mail that the user wants followed by an upload (`ChkDoEmailToo`)
};

/// Makes the pages, saves them locally and sends them by FTP (perform_upload.h), as far as either is switched on, and
/// tells how it went. One at a time: a second call returns at once. During a changeover or while a mail is made it is
/// put off (`revisitftp`). Waits.
void FTPupload(Copy& copy, UploadCause cause = UploadCause::due);

/// Sends the mail that is pending, or makes and sends that of the schedule. Put off with `revisitmail` while a
/// changeover or an upload runs; nothing in a client or while another mail goes out. An upload by FTP follows where
/// `ChkDoEmailToo` asks for it or one was put off. Without a line nothing is made, and a pending mail is dropped. May
/// wait.
void uploadmail(Copy& copy);

/// Tells Weather Underground, Hamweather and APRS, as far as they are on; in a forced run those that have a user. Put
/// off with `revisitwu` while a changeover runs. May wait.
void wunderground(Copy& copy);

/// Asks whether to hang up, where a dial-up connection of ours is up. Waits for the answer.
void offer_to_hang_up(Copy& copy);

}  // namespace nimbry
