#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// What goes out to the world, as the cycle and the timers call for it. None of it runs in a client.

/// Takes the settings of section `FTP` into PublishState.
void getFTP(Copy& copy);

/// TimerFTP: looks whether an upload is due.
void ftp_schedule(Copy& copy);

/// TimFTPTOT: an upload has taken too long.
void ftp_time_out(Copy& copy);

/// Breaks off the upload that is under way and clears `uloadftpbusy` and the marks of its retries.
void cancel_ftp(Copy& copy);

/// timWU: looks whether the weather services are due.
void weather_services(Copy& copy);

/// Refreshes the position text of the packet for APRS.
void update_location_text(Copy& copy);

/// Sends the mails whose hour and minute in the mail schedule is the station's, in the first ten seconds of the minute,
/// once an entry and minute. May wait.
void send_scheduled_mails(Copy& copy);

/// Composes the alarm mail of `AlarmReason` and sends it, with `emailbusy` held. May wait.
void send_alarm_mail(Copy& copy);

/// Composes the changeover mail, before the day is closed. Waits for it.
void gencomail(Copy& copy);

/// Sends the changeover mail to every entry of the mail schedule that asks for one; true when there was one. May wait.
bool send_changeover_mails(Copy& copy);

/// Uploads the pages by FTP; sends a mail; tells the weather services. May wait.
void FTPupload(Copy& copy);
void uploadmail(Copy& copy);
void wunderground(Copy& copy);

/// Asks whether to hang up, where a dial-up connection of ours is up. Waits for the answer.
void offer_to_hang_up(Copy& copy);

}  // namespace nimbry
