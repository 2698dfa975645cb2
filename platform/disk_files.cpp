#include "platform/disk_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include "engine/derived/code_page.h"
#include "platform/descriptor.h"
#include "platform/system_clock.h"

namespace nimbry::platform {

namespace {

// A name that fits beside the longest one that the file system takes, with what replace() puts around it.
constexpr std::size_t longest_temporary_stem = NAME_MAX - 5;

FileResult result_of(int error) {
    switch (error) {
        case 0: return FileResult::ok;
        case ENOENT:
        case ENOTDIR: return FileResult::not_found;
        case EEXIST:
        case ENOTEMPTY: return FileResult::exists;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY: return FileResult::permission;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return FileResult::disk_full;
        case EISDIR:
        case ENXIO:
        case ENODEV: return FileResult::not_a_file;
        default: return FileResult::failed;
    }
}

FileResult result_of_call(int returned) {
    return returned == 0 ? FileResult::ok : result_of(errno);
}

/// What stands under a path, links followed. `ok` for an ordinary file, whose facts are in `facts` then.
FileResult look_at(const std::string& path, struct stat& facts) {
    if (::stat(path.c_str(), &facts) != 0) return result_of(errno);
    return S_ISREG(facts.st_mode) ? FileResult::ok : FileResult::not_a_file;
}

FileResult look_at(const std::string& path) {
    struct stat facts {};
    return look_at(path, facts);
}

/// True when the name is taken by anything at all, a dangling link too.
bool taken(const std::string& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0;
}

/// Opens an ordinary file and tells its facts. An open that does not wait for the other end of a pipe needs no look
/// before it.
FileResult open_file(const std::string& path, int flags, Descriptor& file, struct stat& facts) {
    const auto open = [&](int more) {
        return Descriptor(::open(path.c_str(), flags | more | O_CLOEXEC | O_NOCTTY, mode_t{0666}));
    };
    file = open(O_NONBLOCK);
    if (!file) {
        int error = errno;
        const FileResult seen = look_at(path);
        if (seen == FileResult::not_a_file) return seen;
        // Another program's lease: the kernel has it given back, which only a waiting open waits for.
        if (error == EWOULDBLOCK && seen == FileResult::ok) {
            file = open(0);
            error = errno;
        }
        if (!file) return result_of(error);
    }
    if (::fstat(file.number(), &facts) != 0) return result_of(errno);
    return S_ISREG(facts.st_mode) ? FileResult::ok : FileResult::not_a_file;
}

/// One write as a rule; a disk that takes a part is asked for the rest, and then says why not.
FileResult write_all(const Descriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.number(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return result_of(errno);
        if (written == 0) return FileResult::disk_full;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return FileResult::ok;
}

std::string folder_of(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string leaf_of(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Brings the names in a folder to the disk. Some file systems cannot; the file itself is safe then all the same.
void sync_folder(const std::string& folder) {
    const Descriptor open_folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (open_folder) ::fsync(open_folder.number());
}

/// Where a link leads to, or the path itself when it is none or leads nowhere.
std::string behind_links(const std::string& path) {
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (resolved == nullptr) return path;
    std::string found = resolved;
    std::free(resolved);  // NOLINT(cppcoreguidelines-no-malloc): realpath() gives it by malloc
    return found;
}

/// Gives a file the owner and mode of another. The owner can only be kept as far as the system lets this user.
void take_owner_and_mode(const Descriptor& file, const struct stat& of) {
    if (::fchown(file.number(), of.st_uid, of.st_gid) != 0 && ::fchown(file.number(), uid_t(-1), of.st_gid) != 0) {
        // Another group must not get what was meant for the old one.
        ::fchmod(file.number(), of.st_mode & 0707U);
        return;
    }
    ::fchmod(file.number(), of.st_mode & 07777U);
}

FileResult rename_without_overwriting(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return FileResult::ok;
    if (errno != EINVAL && errno != ENOSYS) return result_of(errno);
    // A file system without that operation.
    if (taken(to)) return FileResult::exists;
    return result_of_call(std::rename(from.c_str(), to.c_str()));
}

}  // namespace

DiskFiles::DiskFiles(std::string folder) : folder_(std::move(folder)) {
    std::signal(SIGIO, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

std::string DiskFiles::path(const std::string& name) const {
    const std::string on_disk = utf8_name(name);
    return on_disk.starts_with('/') ? on_disk : folder_ + '/' + on_disk;
}

FileResult DiskFiles::read(const std::string& name, std::string& bytes, std::size_t limit) const {
    bytes.clear();
    Descriptor file;
    struct stat facts {};
    if (const auto result = open_file(path(name), O_RDONLY, file, facts); result != FileResult::ok) return result;

    // The length that the system states saves growing, but only the end of the file ends the reading.
    constexpr std::size_t piece_size = std::size_t{64} * 1024;
    bytes.reserve(std::min(limit, static_cast<std::size_t>(facts.st_size)) + 1);
    while (bytes.size() < limit) {
        const std::size_t held = bytes.size();
        const std::size_t room = std::min(limit - held, std::max(bytes.capacity() - held, piece_size));
        bytes.resize(held + room);
        const ssize_t got = ::read(file.number(), bytes.data() + held, room);
        const int error = errno;
        bytes.resize(held + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (got == 0) break;
        if (got < 0 && error != EINTR) {
            bytes.clear();
            return result_of(error);
        }
    }
    return FileResult::ok;
}

FileResult DiskFiles::append(const std::string& name, std::string_view bytes) {
    Descriptor file;
    struct stat before {};
    const FileResult opened = open_file(path(name), O_WRONLY | O_APPEND | O_CREAT, file, before);
    if (opened != FileResult::ok) return opened;

    FileResult result = write_all(file, bytes);
    if (result != FileResult::ok && ::ftruncate(file.number(), before.st_size) != 0) return FileResult::failed;
    if (const int error = file.close(); error != 0 && result == FileResult::ok) result = result_of(error);
    return result;
}

FileResult DiskFiles::rewrite(const std::string& name, std::string_view bytes) {
    Descriptor file;
    struct stat old {};
    const FileResult opened = open_file(path(name), O_WRONLY | O_CREAT, file, old);
    if (opened != FileResult::ok) return opened;

    // A file that is saved every few minutes mostly has the room for its new length already.
    constexpr off_t block_size = 512;
    const auto length = static_cast<off_t>(bytes.size());
    if (length > old.st_blocks * block_size && ::fallocate(file.number(), FALLOC_FL_KEEP_SIZE, 0, length) != 0) {
        const FileResult room = result_of(errno);
        if (room == FileResult::disk_full) return room;
    }
    if (const auto result = write_all(file, bytes); result != FileResult::ok) return result;
    if (old.st_size > length && ::ftruncate(file.number(), length) != 0) return result_of(errno);
    return result_of(file.close());
}

FileResult DiskFiles::replace(const std::string& name, std::string_view bytes, bool private_to_owner) {
    const std::string target = behind_links(path(name));
    struct stat old {};
    const FileResult seen = look_at(target, old);
    if (seen != FileResult::ok && seen != FileResult::not_found) return seen;
    const bool is_new = seen == FileResult::not_found;
    if (!is_new && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return result_of(errno);

    const std::string folder = folder_of(target);
    const std::string temporary = folder + "/." + leaf_of(target).substr(0, longest_temporary_stem) + ".new";
    ::unlink(temporary.c_str());
    // An existing file's contents may be private, so nobody else reads the temporary before it has that file's mode.
    const mode_t mode = is_new && !private_to_owner ? 0666 : 0600;
    Descriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file) return result_of(errno);

    if (private_to_owner) old.st_mode &= ~static_cast<mode_t>(0077);
    if (!is_new) take_owner_and_mode(file, old);
    FileResult result = write_all(file, bytes);
    if (result == FileResult::ok) result = result_of_call(::fsync(file.number()));
    if (const int error = file.close(); error != 0 && result == FileResult::ok) result = result_of(error);
    if (result == FileResult::ok) result = result_of_call(std::rename(temporary.c_str(), target.c_str()));
    if (result != FileResult::ok) {
        ::unlink(temporary.c_str());
        return result;
    }
    sync_folder(folder);
    return FileResult::ok;
}

FileResult DiskFiles::rename(const std::string& from, const std::string& to) {
    const std::string old_path = path(from);
    const std::string new_path = path(to);
    if (const auto seen = look_at(old_path); seen != FileResult::ok) return seen;
    const FileResult result = rename_without_overwriting(old_path, new_path);
    if (result != FileResult::failed || errno != EXDEV) return result;

    const FileResult copied = copy(from, to);
    return copied == FileResult::ok ? remove(from) : copied;
}

FileResult DiskFiles::copy(const std::string& from, const std::string& to) {
    struct stat original {};
    if (const auto seen = look_at(path(from), original); seen != FileResult::ok) return seen;
    const std::string new_path = path(to);
    if (taken(new_path)) return FileResult::exists;
    std::string bytes;
    if (const auto result = read(from, bytes); result != FileResult::ok) return result;

    Descriptor file(
        ::open(new_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, original.st_mode & 0777U));
    if (!file) return result_of(errno);
    FileResult result = write_all(file, bytes);
    if (const int error = file.close(); error != 0 && result == FileResult::ok) result = result_of(error);
    if (result != FileResult::ok) ::unlink(new_path.c_str());
    return result;
}

FileResult DiskFiles::remove(const std::string& name) {
    return result_of_call(::unlink(path(name).c_str()));
}

FileResult DiskFiles::sync(const std::string& name) {
    const std::string whole = path(name);
    Descriptor file;
    struct stat facts {};
    if (const auto result = open_file(whole, O_RDONLY, file, facts); result != FileResult::ok) return result;
    if (::fsync(file.number()) != 0) return result_of(errno);
    sync_folder(folder_of(whole));
    return FileResult::ok;
}

bool DiskFiles::exists(const std::string& name) const {
    return look_at(path(name)) == FileResult::ok;
}

bool DiskFiles::in_use(const std::string& name) const {
    // Without O_NONBLOCK this open would itself wait for somebody else's lease, or for the other end of a pipe.
    const Descriptor file(::open(path(name).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!file) return errno == EWOULDBLOCK;
    // Only an ordinary file has leases. Closing it gives this one back.
    return ::fcntl(file.number(), F_SETLEASE, F_WRLCK) != 0 && errno == EAGAIN;
}

std::vector<std::string> DiskFiles::entries() const {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(folder_.c_str()), &::closedir);
    if (!folder) return names;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.emplace_back(name);
    }
    return names;
}

std::optional<CivilTime> DiskFiles::modified(const std::string& name) const {
    struct stat facts {};
    if (look_at(path(name), facts) != FileResult::ok) return std::nullopt;
    return civil_time(std::chrono::system_clock::from_time_t(facts.st_mtime));
}

}  // namespace nimbry::platform
