#pragma once

#include <curl/curl.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/open_sockets.h"

namespace nimbry::platform {

struct CurlCleanup {
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

struct CurlMultiCleanup {
    void operator()(CURLM* connections) const { curl_multi_cleanup(connections); }
};

/// One libcurl transfer after the other on one handle, which keeps its connection between them. Used by one thread.
class CurlHandle {
public:
    /// `broken_off` is asked about once a second, and at every piece of data: true ends the transfer that runs.
    /// `sockets` are those that it opens; they must outlive it. `certificates` is a file of certificates to trust
    /// instead of the system's; empty: those.
    CurlHandle(std::function<bool()> broken_off, OpenSockets& sockets, const std::string& certificates);
    CurlHandle(const CurlHandle&) = delete;
    CurlHandle& operator=(const CurlHandle&) = delete;

    template <class Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(get(), option, value);
    }
    void set(CURLoption option, const std::string& text) { set(option, text.c_str()); }  // libcurl copies it

    /// Calls `heard` with each line that goes over a control connection, without its line end: a command of ours
    /// (passwords masked) or a line of the server's.
    void listen(std::function<void(bool ours, std::string line)> heard);

    /// Refuses connections that `refused` says yes to.
    void refuse(std::function<bool(const curl_sockaddr&)> refused) { refused_ = std::move(refused); }

    /// Carries the transfer out that the options describe, over the connection of the last one where that still stands;
    /// ends with libcurl's verdict. Takes until it is done, `broken_off` says so, or a limit among the options is over.
    CURLcode perform();

    /// A number of the last transfer: CURLINFO_RESPONSE_CODE, CURLINFO_OS_ERRNO.
    [[nodiscard]] long number(CURLINFO what) const;

    [[nodiscard]] CURL* get() const { return curl_.get(); }

private:
    void wait_for_sockets();
    static curl_socket_t open_socket(void* self, curlsocktype, curl_sockaddr* address);
    static int close_socket(void* sockets, curl_socket_t socket);
    static int progress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
    static int debug(CURL*, curl_infotype type, char* data, std::size_t size, void* self);

    std::function<bool()> broken_off_;
    OpenSockets& sockets_;
    std::function<void(bool, std::string)> heard_;
    std::function<bool(const curl_sockaddr&)> refused_;
    // The first to go, the transfer before its connections: their clean-up still talks, and calls the rest.
    std::unique_ptr<CURLM, CurlMultiCleanup> connections_;
    std::unique_ptr<CURL, CurlCleanup> curl_;
};

/// A command as it may be shown: the word behind PASS is replaced by "****".
[[nodiscard]] std::string masked(const std::string& command);

/// The code that a server's line begins with, "550 No such file." or "250-first of more"; 0 when it has none.
[[nodiscard]] int reply_code(const std::string& line);

/// Why a conversation with a server ended, in one line: the server's last word if that was a refusal (400 or above),
/// else libcurl's text for the code. libcurl's own message of the moment is not used: after an active transfer it holds
/// something that went well.
[[nodiscard]] std::string fault_text(CURLcode code, const std::string& last_reply);

}  // namespace nimbry::platform
