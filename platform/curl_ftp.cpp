#include "platform/curl_ftp.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdio>
#include <memory>
#include <utility>
#include <variant>

#include "platform/curl_handle.h"
#include "platform/ftp_status.h"
#include "platform/mailbox.h"
#include "platform/transfer_urls.h"

namespace nimbry::platform {
namespace {

constexpr long patience_seconds = 30;
// Longer than anybody waits for a file: the caller's watch is to end it, not libcurl's own of one minute.
constexpr long patience_with_files_seconds = 600;
constexpr long quit_seconds = 3;

struct FileClose {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct Connect {
    FtpServer server;
};
struct Put {
    std::string local, remote;
};
struct Quit {};
using FtpStep = std::variant<Connect, Put, Quit>;

/// libcurl before 8.0 sends a file of an active connection in the clear although TLS was asked for.
bool active_tls_is_in_the_clear() {
    constexpr unsigned first_good = 0x080000;
    return curl_version_info(CURLVERSION_NOW)->version_num < first_good;
}

/// The thread's side of a session.
class FtpWork {
public:
    using Place = Mailbox<FtpStep, FtpEnd, FtpExchange>;

    FtpWork(std::shared_ptr<Place> place, const std::string& certificates)
        : place_(std::move(place)), curl_([this] { return place_->given_up(); }, place_->sockets(), certificates) {
        curl_.set(CURLOPT_PROTOCOLS_STR, "ftp,ftps");
        curl_.set(CURLOPT_PROXY, "");
        curl_.set(CURLOPT_CONNECTTIMEOUT, patience_seconds);
        curl_.set(CURLOPT_ACCEPTTIMEOUT_MS, patience_seconds * 1000);
        curl_.set(CURLOPT_PATH_AS_IS, 1L);
        curl_.set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_SINGLECWD));
        curl_.set(CURLOPT_READFUNCTION, &FtpWork::read);
        // A server that has hung up between two files would be logged in to again behind our back.
        curl_.refuse([this](const curl_sockaddr& to) { return logged_in_ && port_of(to.addr) == server_.port; });
        curl_.listen([this](bool ours, const std::string& line) { hear(ours, line); });
    }

    void run() {
        while (const std::optional<FtpStep> step = place_->next()) {
            place_->finish(std::visit([this](const auto& what) { return take(what); }, *step));
        }
    }

private:
    FtpEnd take(const Connect& connect) {
        server_ = connect.server;
        curl_.set(CURLOPT_URL, directory_url(server_));
        curl_.set(CURLOPT_USERNAME, server_.user);
        curl_.set(CURLOPT_PASSWORD, server_.password);
        if (server_.active) curl_.set(CURLOPT_FTPPORT, "-");
        if (server_.encryption != Encryption::none) {
            curl_.set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
            curl_.set(CURLOPT_FTPSSLAUTH, static_cast<long>(CURLFTPAUTH_TLS));
        }
        curl_.set(CURLOPT_NOBODY, 1L);
        curl_.set(CURLOPT_SERVER_RESPONSE_TIMEOUT, patience_seconds);
        curl_off_t microseconds = 0;
        const CURLcode code = curl_.perform();
        curl_easy_getinfo(curl_.get(), CURLINFO_CONNECT_TIME_T, &microseconds);
        logged_in_ = true;
        const int status = ftp_status({.code = code,
                                       .last_reply = curl_.number(CURLINFO_RESPONSE_CODE),
                                       .os_error = curl_.number(CURLINFO_OS_ERRNO),
                                       .tcp_stood = microseconds > 0});
        const bool has_name = status != static_cast<int>(code);
        return {.status = status, .words = has_name ? "" : curl_easy_strerror(code)};
    }

    FtpEnd take(const Put& put) {
        if (server_.active && server_.encryption != Encryption::none && active_tls_is_in_the_clear())
            return {.fault = no_active_tls};
        const std::unique_ptr<std::FILE, FileClose> file(std::fopen(put.local.c_str(), "rbe"));
        if (file == nullptr) return {.fault = curl_easy_strerror(CURLE_READ_ERROR)};
        curl_.set(CURLOPT_URL, file_url(server_, put.remote));
        curl_.set(CURLOPT_NOBODY, 0L);
        curl_.set(CURLOPT_UPLOAD, 1L);
        curl_.set(CURLOPT_READDATA, file.get());
        curl_.set(CURLOPT_SERVER_RESPONSE_TIMEOUT, patience_with_files_seconds);
        last_reply_.clear();
        const CURLcode code = curl_.perform();
        if (code == CURLE_OK) return {};
        return {.fault = fault_text(code, last_reply_) + (opening_failed(code) ? " (try passive mode)" : "")};
    }

    FtpEnd take(const Quit&) {
        curl_slist* const farewell = curl_slist_append(nullptr, "QUIT");
        const std::unique_ptr<curl_slist, CurlCleanup> owner(farewell);
        curl_.set(CURLOPT_URL, directory_url(server_));
        curl_.set(CURLOPT_UPLOAD, 0L);
        curl_.set(CURLOPT_NOBODY, 1L);
        curl_.set(CURLOPT_QUOTE, farewell);
        curl_.set(CURLOPT_FORBID_REUSE, 1L);
        curl_.set(CURLOPT_TIMEOUT, quit_seconds);
        // A polite server hangs up and a silent one does not answer: to libcurl both are errors, to us both are the
        // end.
        curl_.perform();
        curl_.set(CURLOPT_QUOTE, static_cast<curl_slist*>(nullptr));
        return {};
    }

    // The server could not reach us, as behind most routers.
    [[nodiscard]] bool opening_failed(CURLcode code) const {
        constexpr int cannot_open = 425;
        return server_.active && (code == CURLE_FTP_PORT_FAILED || code == CURLE_FTP_ACCEPT_FAILED ||
                                  code == CURLE_FTP_ACCEPT_TIMEOUT || reply_code(last_reply_) == cannot_open);
    }

    void hear(bool ours, const std::string& line) {
        if (ours) {
            command_ = line;
        } else {
            last_reply_ = line;
            place_->add({command_, line});
        }
    }

    static std::size_t read(char* buffer, std::size_t size, std::size_t count, void* file) {
        std::FILE* const source = static_cast<std::FILE*>(file);
        const std::size_t got = std::fread(buffer, size, count, source);
        return std::ferror(source) != 0 ? CURL_READFUNC_ABORT : got;
    }

    static std::uint16_t port_of(const sockaddr& address) {
        if (address.sa_family == AF_INET) return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
        return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    }

    std::shared_ptr<Place> place_;
    FtpServer server_;
    bool logged_in_ = false;
    std::string command_, last_reply_;
    CurlHandle curl_;
};

/// The loop's side of it.
class CurlFtpSession : public FtpSession {
public:
    CurlFtpSession(WorkThreads& threads, const std::string& certificates)
        : place_(std::make_shared<FtpWork::Place>(threads.bell())) {
        threads.start([place = place_, certificates] { FtpWork(place, certificates).run(); });
    }
    ~CurlFtpSession() override { place_->give_up(); }
    CurlFtpSession(const CurlFtpSession&) = delete;
    CurlFtpSession& operator=(const CurlFtpSession&) = delete;

    void connect(const FtpServer& server) override { place_->begin(Connect{server}); }
    void put(const std::string& local, const std::string& remote) override { place_->begin(Put{local, remote}); }
    void quit() override { place_->begin(Quit{}); }
    [[nodiscard]] bool under_way() const override { return place_->under_way(); }
    [[nodiscard]] FtpEnd end() const override { return place_->end(); }
    [[nodiscard]] std::vector<FtpExchange> take_exchanges() override { return place_->take_all(); }

private:
    std::shared_ptr<FtpWork::Place> place_;
};

}  // namespace

std::unique_ptr<FtpSession> curl_ftp_session(WorkThreads& threads, const std::string& certificates) {
    return std::make_unique<CurlFtpSession>(threads, certificates);
}

}  // namespace nimbry::platform
