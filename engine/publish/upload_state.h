#pragma once

#include <string>

namespace nimbry {

/// What happens during an upload by FTP, as the routines that take part in it leave word for each other: the steps of
/// the session, the watchdog, and the routine that tells how it ended.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct UploadState {
    bool FtpConnected = false;      ///< the login went well
    bool FtpConnectFailed = false;  ///< it did not, or the watchdog has ended the upload
    bool FtpFileDone = false;       ///< (kept) the last file is on the server
    bool FtpTransferError = false;  ///< a file did not get there
    bool FtpGeneralError = false;   ///< a run-time error has ended the upload
    bool FtpTimedOut = false;       ///< the watchdog has barked: whoever waits for the server gives up

    int watchdog_ticks = 0;    ///< of TimFTPTOT since the last sign of life
    int ExtraFileCounter = 0;  ///< uploads, counted up to `UploadCount`, for the additional files

    bool TimComFail_rests = false;  ///< stopped for the upload, and to be started again after it
    bool TimAlarm_rests = false;    ///< likewise

    std::string fault;       ///< why the last upload failed, in the log's words or more; empty: it went well
    std::string debug_text;  ///< what the debug window shows (ftp_debug.h)
};

}  // namespace nimbry
