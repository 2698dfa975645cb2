#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// What an upload follows from.
enum class UploadCause {
    due,         ///< the schedule, a retry, the forced button
    after_mail,  ///< a mail that the user wants followed by an upload (`ChkDoEmailToo`)
};

/// Ticks of TimerFTP, one every ten seconds.
inline constexpr int ticks_to_first_upload = 3;
inline constexpr int ticks_a_minute = 6;

/// TimerFTP: looks whether an upload is due.
void ftp_schedule(Copy& copy);

/// Makes the pages, saves them locally and sends them by FTP (perform_upload.h), as far as either is switched on, and
/// tells how it went. One at a time: a second call returns at once. During a changeover or while a mail is made it is
/// put off (`revisitftp`). Nothing in a client. Waits.
void FTPupload(Copy& copy, UploadCause cause = UploadCause::due);

}  // namespace nimbry
