#pragma once

#include <curl/curl.h>

namespace nimbry::platform {

/// What is known of a login after it has ended.
struct LoginResult {
    CURLcode code = CURLE_OK;
    long last_reply = 0;    ///< the code of the server's last reply; 0 without one
    long os_error = 0;      ///< the system's error of the connection, an errno
    bool tcp_stood = true;  ///< the server's machine has answered at all
};

/// The number of the status event for it (FtpEnd::status). libcurl's code alone would mislead: it reports a greeting
/// "421 Too many users" as a time-out, and a server that hangs up in the middle of a word as a failed read.
[[nodiscard]] int ftp_status(const LoginResult& result);

}  // namespace nimbry::platform
