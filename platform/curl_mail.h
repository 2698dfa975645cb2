#pragma once

#include <memory>
#include <string>

#include "engine/ports/transfers.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// A mail by libcurl, in a thread of its own, which also reads the attachments.
[[nodiscard]] std::unique_ptr<MailDelivery> curl_mail(WorkThreads& threads, const Mail& mail,
                                                      const std::string& certificates);

}  // namespace nimbry::platform
