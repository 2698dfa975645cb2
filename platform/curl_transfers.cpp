#include "platform/curl_transfers.h"

#include <curl/curl.h>

#include <cstdlib>
#include <utility>

#include "platform/curl_ftp.h"
#include "platform/curl_mail.h"
#include "platform/curl_web.h"
#include "platform/network_interfaces.h"

namespace nimbry::platform {
namespace {

std::string certificates_named() {
    const char* const file = std::getenv("SSL_CERT_FILE");
    return file == nullptr ? "" : file;
}

}  // namespace

CurlTransfers::CurlTransfers(std::function<void()> news)
    : certificates_(certificates_named()), threads_(std::move(news)) {
    // Before there is a second thread: the first use of the library is not safe for several.
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

CurlTransfers::~CurlTransfers() = default;

std::unique_ptr<FtpSession> CurlTransfers::ftp_session() {
    return curl_ftp_session(threads_, certificates_);
}

std::unique_ptr<MailDelivery> CurlTransfers::send(const Mail& mail) {
    return curl_mail(threads_, mail, certificates_);
}

std::unique_ptr<WebReply> CurlTransfers::get(const std::string& url, Milliseconds limit) {
    return curl_get(threads_, url, limit, certificates_);
}

bool CurlTransfers::reachable(const std::string& host) const {
    return is_this_machine(host) || on_a_network();
}

}  // namespace nimbry::platform
