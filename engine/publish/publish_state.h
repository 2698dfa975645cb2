#pragma once

#include "engine/core/busy_flag.h"

namespace nimbry {

/// What is published, and what of it is under way.
struct PublishState {
    bool ChkEnableFTP = false;  ///< key `FTPen`: pages go out by FTP
    bool ChkSendMail = false;   ///< key `EMailEn`: mails go out by schedule
    bool chkWU = false;         ///< key `WUactive` of section FTP: Weather Underground
    bool chkHW = false;         ///< key `HWactive` of section FTP: Hamweather

    BusyFlag uloadftpbusy;  ///< an FTP upload is under way
    BusyFlag emailbusy;     ///< a mail is under way
};

}  // namespace nimbry
