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

    bool revisitftp = false;   ///< an upload was put off by a changeover
    bool revisitmail = false;  ///< a mail was put off by it
    bool revisitwu = false;    ///< the weather services were

    BusyFlag uloadftpbusy;  ///< an FTP upload is under way
    BusyFlag emailbusy;     ///< a mail is under way
    BusyFlag wubusy;        ///< the weather services are being told
};

}  // namespace nimbry
