#pragma once

#include <array>
#include <optional>
#include <string>

#include "engine/core/busy_flag.h"
#include "engine/ports/clock.h"
#include "engine/publish/internet_dialog.h"
#include "engine/publish/upload_state.h"

namespace nimbry {

/// The three mails, each with a template of its own.
enum class MailKind { scheduled, alarm, changeover };

/// How a kind of upload went last.
struct LastRun {
    std::optional<CivilTime> end;  ///< by the computer's clock; nothing before the first
    std::string result;            ///< "ok", or why it failed, as the program log would say it
    unsigned runs = 0;             ///< how many have ended
};

/// Rain of the last hour as the weather services are told it: what fell in each interval between two reports.
struct IntervalRain {
    std::array<int, 16> mm{};  ///< slots 1 to 15
    int position = 0;          ///< the next slot; 0: no report yet
    float total = 0;           ///< the station's counter at the last report
};

/// What is published, and what of it is under way.
struct PublishState {
    InternetDialog NimbryFTPSetup;  ///< the settings in force

    int FtpMinutes = 2;  ///< minutes between two uploads: `FTPHours` and `FTPMins` as one number

    bool FtpForced = false;  ///< what is under way was asked for by a forced button
    std::string lblStatus;   ///< which one: "Forced FTP upload", "Forced email send", "Forced Underground upload"

    bool ProgramDialled = false;  ///< this program has dialled; never here (internet.h)

    /// The position as the packet for APRS gives it, "3351.41S" and "15112.56E"; both empty without a location.
    std::string aprs_latitude, aprs_longitude;

    int FtpTicks = 1;             ///< ticks of TimerFTP towards the next upload
    bool FtpStartupDone = false;  ///< the first upload after the start has been launched
    UploadState upload;           ///< the upload that is under way, or how the last one went

    std::optional<MailKind> pending_mail;       ///< a mail that is made and has not gone yet; its text is `mail_body`
    std::optional<CivilTime> last_mail_minute;  ///< the station's minute for which the schedule was last served

    int WuMinutes = 0;           ///< ticks of timWU towards the next report to the weather services
    IntervalRain interval_rain;  ///< their rain of the last hour
    bool AprsSkipped = false;    ///< the last report left APRS out, to keep its rate down

    bool revisitftp = false;   ///< an upload was put off by a changeover
    bool revisitmail = false;  ///< a mail was put off by it, or by an upload
    bool revisitwu = false;    ///< the weather services were

    BusyFlag uloadftpbusy;  ///< an FTP upload is under way
    BusyFlag emailbusy;     ///< a mail is under way
    BusyFlag wubusy;        ///< the weather services are being told

    LastRun last_ftp, last_mail, last_weather, last_aprs;
};

}  // namespace nimbry
