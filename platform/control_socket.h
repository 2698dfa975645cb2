#pragma once

#include <sys/types.h>

#include <string>

#include "platform/descriptor.h"

namespace nimbry::platform {

// The local socket of a copy: `nimbry.socket` in its folder, which only its owner may open. A folder's name may be of
// any length. Where the folder's file system holds no sockets (many network shares) it is
// "/tmp/nimbry-DEVICE-INODE.socket" by the folder's own numbers, and both sides look at who is on the other end.

/// The listening side of a copy. Removes its socket when it ends.
class ControlSocket {
public:
    /// Makes the socket, in place of one that a killed copy has left: only for the holder of the folder's lock.
    /// `folder` as program_folder() gives it.
    explicit ControlSocket(std::string folder);
    ~ControlSocket();
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;

    /// The listening descriptor, non-blocking; -1 when it could not be made.
    [[nodiscard]] int number() const { return listener_.number(); }

    /// Why it could not be made, in a few words; empty when it listens.
    [[nodiscard]] const std::string& error() const { return error_; }

    /// Takes the next connection, non-blocking; none when nobody waits (errno EAGAIN), when the caller is somebody else
    /// than this user or root (EPERM), or on an error.
    [[nodiscard]] Descriptor accept() const;

private:
    std::string folder_;
    Descriptor listener_;
    bool in_folder_ = true;
    std::string error_;
};

/// A connection to the copy of a folder.
struct ControlConnection {
    Descriptor socket;  ///< blocking; none when no copy answers
    pid_t process = 0;  ///< the copy's; 0 when it is not visible from here
};

/// Connects to the copy that has the folder. One that belongs neither to this user nor to the folder's owner nor to
/// root does not count.
[[nodiscard]] ControlConnection connect_to_copy(const std::string& folder);

}  // namespace nimbry::platform
