#include "platform/open_sockets.h"

#include <sys/socket.h>
#include <unistd.h>

namespace nimbry::platform {

curl_socket_t OpenSockets::open(const curl_sockaddr& address) {
    const std::lock_guard hold(lock_);
    if (hung_up_) return CURL_SOCKET_BAD;
    const curl_socket_t opened = socket(address.family, address.socktype | SOCK_CLOEXEC, address.protocol);
    if (opened != CURL_SOCKET_BAD) open_.insert(opened);
    return opened;
}

// Closed under the lock: its number may belong to another socket a moment later.
int OpenSockets::close(curl_socket_t socket) {
    const std::lock_guard hold(lock_);
    open_.erase(socket);
    return ::close(socket);
}

void OpenSockets::hang_up() {
    const std::lock_guard hold(lock_);
    hung_up_ = true;
    for (const curl_socket_t socket : open_) shutdown(socket, SHUT_RDWR);
}

}  // namespace nimbry::platform
