#pragma once

#include <memory>
#include <string>

#include "engine/ports/transfers.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// What a file ends with where the libcurl of the system would send it in the clear although TLS was asked for.
inline constexpr const char* no_active_tls = "TLS is not possible in active mode here (try passive mode)";

/// An FTP session by libcurl, in a thread of its own: while libcurl waits for the answer to a file, or for a name, it
/// does so inside the call. Every step runs on one handle, so they share one control connection.
[[nodiscard]] std::unique_ptr<FtpSession> curl_ftp_session(WorkThreads& threads, const std::string& certificates);

}  // namespace nimbry::platform
