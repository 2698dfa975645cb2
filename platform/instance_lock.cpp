#include "platform/instance_lock.h"

#include <QFile>
#include <QLockFile>
#include <QSysInfo>

namespace nimbry::platform {

namespace {

/// Names the copy that holds the lock as far as the file tells.
std::string holder_of(const QLockFile& lock) {
    qint64 process = 0;
    QString host;
    QString program;
    if (!lock.getLockInfo(&process, &host, &program)) return "";
    std::string holder = " (process " + std::to_string(process);
    if (host != QSysInfo::machineHostName()) holder += " on " + host.toStdString();
    return holder + ")";
}

}  // namespace

InstanceLock::InstanceLock(const std::string& folder)
    : folder_(folder), lock_(std::make_unique<QLockFile>(QFile::decodeName(folder.c_str()) + "/nimbry.lock")) {
    // A copy runs for months: its lock never grows old, only its process can be gone.
    lock_->setStaleLockTime(0);
}

InstanceLock::~InstanceLock() = default;

InstanceLock::Result InstanceLock::take() {
    refusal_.clear();
    if (lock_->tryLock(0)) return Result::held;
    switch (lock_->error()) {
        case QLockFile::LockFailedError:
            refusal_ = "Another copy of Nimbry" + holder_of(*lock_) + " has the folder " + folder_;
            return Result::other_instance;
        case QLockFile::PermissionError:
            refusal_ = "The folder " + folder_ + " cannot be written";
            return Result::not_writable;
        default:
            refusal_ = "The folder " + folder_ + " cannot be locked: nimbry.lock could not be made";
            return Result::failed;
    }
}

}  // namespace nimbry::platform
