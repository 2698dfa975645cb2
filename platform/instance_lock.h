#pragma once

#include <memory>
#include <string>

class QLockFile;

namespace nimbry::platform {

/// What a second copy tells before it ends.
inline constexpr const char* already_running_text =
    "Nimbry is already running on this computer,\r\nYou can not run more than one instance of the program";

/// One running copy per folder: the file `nimbry.lock` in it, held from take() to the end of this object. The lock of a
/// copy that was killed is taken over at once; one that a copy on another machine holds (a folder on a share) is not.
class InstanceLock {
public:
    enum class Result {
        held,            ///< this copy has the folder
        other_instance,  ///< a running copy has it
        not_writable,    ///< no file can be made in the folder
        failed,          ///< any other error of the disk
    };

    /// `folder` as program_folder() gives it. Takes nothing yet.
    explicit InstanceLock(const std::string& folder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Tries once, without waiting.
    [[nodiscard]] Result take();

    /// What take() is to say to the user, one line without a line end; empty when the lock is held.
    [[nodiscard]] const std::string& refusal() const { return refusal_; }

private:
    std::string folder_;
    std::unique_ptr<QLockFile> lock_;
    std::string refusal_;
};

}  // namespace nimbry::platform
