#include "platform/control_socket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

namespace nimbry::platform {

namespace {

constexpr const char* socket_name = "nimbry.socket";
constexpr int waiting_connections = 16;

/// The address of the socket in a folder. A socket's address holds 107 bytes, so the folder is named by its descriptor.
class Address {
public:
    Address(const std::string& folder, bool in_folder)
        : folder_(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
        struct stat facts {};
        if (!folder_ || ::fstat(folder_.number(), &facts) != 0) {
            error_ = errno;
            return;
        }
        owner_ = facts.st_uid;
        path_ = in_folder
                    ? "/proc/self/fd/" + std::to_string(folder_.number()) + '/' + socket_name
                    : "/tmp/nimbry-" + std::to_string(facts.st_dev) + '-' + std::to_string(facts.st_ino) + ".socket";
        address_.sun_family = AF_UNIX;
        path_.copy(address_.sun_path, sizeof address_.sun_path - 1);
    }

    /// Why the folder itself cannot be reached; 0 when it can.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] const sockaddr* get() const {
        return reinterpret_cast<const sockaddr*>(&address_);  // NOLINT: the socket interface's own way
    }
    [[nodiscard]] static socklen_t size() { return sizeof(sockaddr_un); }
    [[nodiscard]] uid_t folder_owner() const { return owner_; }

    /// Takes away a socket of this user that nobody listens at any more. Anything else stays and will be in the way.
    void remove_socket() const {
        struct stat facts {};
        if (::lstat(path_.c_str(), &facts) != 0 || !S_ISSOCK(facts.st_mode) || facts.st_uid != ::geteuid()) return;
        ::unlink(path_.c_str());
    }

private:
    Descriptor folder_;
    std::string path_;
    sockaddr_un address_{};
    uid_t owner_ = 0;
    int error_ = 0;
};

std::optional<ucred> other_end(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return std::nullopt;
    return peer;
}

/// The listening socket; none, and errno says why, when it cannot be made.
Descriptor listen_at(const Address& address) {
    if (address.error() != 0) {
        errno = address.error();
        return {};
    }
    Descriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // The mode of the socket itself becomes the mode of its name, so nobody else can open it for even an instant.
    if (!listener || ::fchmod(listener.number(), 0600) != 0) return {};
    address.remove_socket();
    if (::bind(listener.number(), address.get(), Address::size()) != 0) return {};
    if (::listen(listener.number(), waiting_connections) != 0) return {};
    return listener;
}

}  // namespace

ControlSocket::ControlSocket(std::string folder) : folder_(std::move(folder)) {
    for (const bool in_folder : {true, false}) {
        listener_ = listen_at(Address(folder_, in_folder));
        in_folder_ = in_folder;
        if (listener_) {
            error_.clear();
            return;
        }
        if (error_.empty()) error_ = std::strerror(errno);  // the folder's own reason is the one that helps
    }
}

ControlSocket::~ControlSocket() {
    if (listener_) Address(folder_, in_folder_).remove_socket();
}

Descriptor ControlSocket::accept() const {
    Descriptor caller(::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!caller) return caller;
    const auto peer = other_end(caller.number());
    if (peer && (peer->uid == ::geteuid() || peer->uid == 0)) return caller;
    caller.close();
    errno = EPERM;
    return caller;
}

ControlConnection connect_to_copy(const std::string& folder) {
    for (const bool in_folder : {true, false}) {
        const Address address(folder, in_folder);
        if (address.error() != 0) break;
        Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (!socket || ::connect(socket.number(), address.get(), Address::size()) != 0) continue;
        const auto peer = other_end(socket.number());
        if (!peer) continue;
        if (peer->uid != ::geteuid() && peer->uid != 0 && peer->uid != address.folder_owner()) continue;
        return {std::move(socket), peer->pid};
    }
    return {};
}

}  // namespace nimbry::platform
