#pragma once

#include <memory>
#include <string>

#include "engine/ports/transfers.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// An FTP session by libcurl, in a thread of its own: while libcurl waits for the answer to a file, or for a name, it
/// does so inside the call. Every step runs on one handle, so they share one control connection.
[[nodiscard]] std::unique_ptr<FtpSession> curl_ftp_session(WorkThreads& threads, const std::string& certificates);

}  // namespace nimbry::platform
