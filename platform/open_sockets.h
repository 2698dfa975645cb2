#pragma once

#include <curl/curl.h>

#include <mutex>
#include <set>

namespace nimbry::platform {

/// The sockets of one libcurl handle, so that another thread can hang up: what waits for an answer in a call of
/// libcurl's, even in its clean-up, then sees the end of the connection.
class OpenSockets {
public:
    /// For libcurl's thread: a new socket; none once it has been hung up.
    [[nodiscard]] curl_socket_t open(const curl_sockaddr& address);
    int close(curl_socket_t socket);

    /// For any thread: ends all connections.
    void hang_up();

private:
    std::mutex lock_;
    std::set<curl_socket_t> open_;
    bool hung_up_ = false;
};

}  // namespace nimbry::platform
