#include "platform/curl_transfers.h"

namespace nimbry::platform {
namespace {

constexpr int no_reply = 5002;
const char* const no_connection = "Couldn't connect to server";

class NoSession : public FtpSession {
public:
    void connect(const FtpServer&) override {}
    void put(const std::string&, const std::string&) override {}
    void quit() override {}
    [[nodiscard]] bool under_way() const override { return false; }
    [[nodiscard]] FtpEnd end() const override { return {.status = no_reply, .fault = no_connection}; }
    [[nodiscard]] std::vector<FtpExchange> take_exchanges() override { return {}; }
};

class NoDelivery : public MailDelivery {
public:
    [[nodiscard]] bool under_way() const override { return false; }
    [[nodiscard]] std::string fault() const override { return no_connection; }
};

class NoReply : public WebReply {
public:
    [[nodiscard]] bool under_way() const override { return false; }
    [[nodiscard]] End end() const override { return End::no_connection; }
    [[nodiscard]] int status() const override { return 0; }
    [[nodiscard]] std::string body_start() const override { return {}; }
};

}  // namespace

std::unique_ptr<FtpSession> CurlTransfers::ftp_session() {
    return std::make_unique<NoSession>();
}

std::unique_ptr<MailDelivery> CurlTransfers::send(const Mail&) {
    return std::make_unique<NoDelivery>();
}

std::unique_ptr<WebReply> CurlTransfers::get(const std::string&, Milliseconds) {
    return std::make_unique<NoReply>();
}

bool CurlTransfers::reachable(const std::string&) const {
    return false;
}

}  // namespace nimbry::platform
