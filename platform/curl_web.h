#pragma once

#include <memory>
#include <string>

#include "engine/ports/transfers.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// A web request by libcurl, in a thread of its own. It takes the proxy that the environment names (`http_proxy`).
[[nodiscard]] std::unique_ptr<WebReply> curl_get(WorkThreads& threads, const std::string& url, Milliseconds limit,
                                                 const std::string& certificates);

}  // namespace nimbry::platform
