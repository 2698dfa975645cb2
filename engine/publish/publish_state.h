#pragma once

#include "engine/core/busy_flag.h"

namespace nimbry {

/// What is published, and what of it is under way.
struct PublishState {
    bool ChkEnableFTP = false;  ///< key `FTPen`: pages go out by FTP
    bool ChkSendMail = false;   ///< key `EMailEn`: mails go out by schedule
    bool chkWU = false;         ///< key `WUactive` of section FTP: Weather Underground
    bool chkHW = false;         ///< key `HWactive` of section FTP: Hamweather

    bool chkLocal = false;     ///< key `LocalSave`: logs and pages are also put into a folder of the user's
    std::string txtLocalPath;  ///< key `LocalPath`: that folder

    bool ProgramDialled = false;  ///< this program has dialled, and its connection is up

    int FtpMinutes = 2;         ///< keys `FTPHours`, `FTPMins`: minutes between two uploads
    std::string FTPRemoteFile;  ///< what the first page is called outside, "weather.htm"; the others get their number
    std::string MailTitle;      ///< head line of the mails
    std::string txtAPRSID;      ///< key `APRSuser`: the station's call sign

    /// The position as the packet for APRS gives it, "3351.41S" and "15112.56E"; both empty without a location.
    std::string aprs_latitude, aprs_longitude;

    int FtpTicks = 1;             ///< ticks of TimerFTP towards the next upload
    bool FtpStartupDone = false;  ///< the first upload after the start has been

    bool revisitftp = false;   ///< an upload was put off by a changeover
    bool revisitmail = false;  ///< a mail was put off by it
    bool revisitwu = false;    ///< the weather services were

    BusyFlag uloadftpbusy;  ///< an FTP upload is under way
    BusyFlag emailbusy;     ///< a mail is under way
    BusyFlag wubusy;        ///< the weather services are being told
};

}  // namespace nimbry
