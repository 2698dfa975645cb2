#pragma once

#include "engine/ports/transfers.h"

namespace nimbry::platform {

/// The way out to the servers, by libcurl.
class CurlTransfers : public Transfers {
public:
    [[nodiscard]] std::unique_ptr<FtpSession> ftp_session() override;
    [[nodiscard]] std::unique_ptr<MailDelivery> send(const Mail& mail) override;
    [[nodiscard]] std::unique_ptr<WebReply> get(const std::string& url, Milliseconds limit) override;
    [[nodiscard]] bool reachable(const std::string& host) const override;
};

}  // namespace nimbry::platform
