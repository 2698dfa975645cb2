#pragma once

#include <functional>
#include <memory>
#include <string>

#include "engine/ports/transfers.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// The way out to the servers, by libcurl. Each FTP session, mail and request has a thread of its own, because libcurl
/// waits inside its calls for some answers: a server that confirms a file late would hold up everything else on its
/// thread.
///
/// TLS certificates are checked against those that the system trusts, or, as with other programs, against those in the
/// file that the environment variable SSL_CERT_FILE names.
class CurlTransfers : public Transfers {
public:
    /// `news` is called on the loop's thread each time after something has ended. Needs the QCoreApplication.
    explicit CurlTransfers(std::function<void()> news);
    ~CurlTransfers() override;
    CurlTransfers(const CurlTransfers&) = delete;
    CurlTransfers& operator=(const CurlTransfers&) = delete;

    [[nodiscard]] std::unique_ptr<FtpSession> ftp_session() override;
    [[nodiscard]] std::unique_ptr<MailDelivery> send(const Mail& mail) override;
    [[nodiscard]] std::unique_ptr<WebReply> get(const std::string& url, Milliseconds limit) override;
    [[nodiscard]] bool reachable(const std::string& host) const override;

private:
    std::string certificates_;
    WorkThreads threads_;
};

}  // namespace nimbry::platform
