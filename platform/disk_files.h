#pragma once

#include <string>

#include "engine/ports/files.h"

namespace nimbry::platform {

/// The disk of a Linux system behind the engine's port, for the program's folder.
///
/// Names are 8-bit texts of the engine. One that is proper UTF-8 (plain ASCII too) is taken byte for byte; any other is
/// Windows-1252 and is spelled as UTF-8 on the disk, so that "Wetter für uns" typed in a dialog finds its folder. Only
/// ordinary files are read and written, through symbolic links too; a folder, a device or a pipe under the name is
/// `not_a_file`.
///
/// Everything runs on the calling thread and nothing stays open. The lock of another program is never waited for by
/// in_use(); every other call goes through to the disk.
class DiskFiles : public Files {
public:
    /// `folder` is the absolute path of the program's folder, as bytes of the file system; it need not exist yet.
    ///
    /// From here on the process ignores two signals whose default action would end it: SIGIO, which arrives when
    /// another program opens a file in the instant that in_use() looks at it, and SIGXFSZ, which stands for a full
    /// quota and is to arrive as `disk_full`.
    explicit DiskFiles(std::string folder);

    FileResult read(const std::string& name, std::string& bytes,
                    std::size_t limit = static_cast<std::size_t>(-1)) const override;

    /// A part that was written before a failure is cut off again; a file that was made for it is left empty.
    FileResult append(const std::string& name, std::string_view bytes) override;

    /// The room for the whole text is reserved first where the file system can do that: on a full disk the file then
    /// stays as it was.
    FileResult rewrite(const std::string& name, std::string_view bytes) override;

    /// The temporary is ".NAME.new" in the same folder; one that a crash left behind is made anew. A file that its mode
    /// protects from writing is not replaced: `permission`. A symbolic link stays, and the file it leads to is
    /// replaced.
    FileResult replace(const std::string& name, std::string_view bytes, bool private_to_owner = false) override;

    /// Between two file systems the file is copied and then removed.
    FileResult rename(const std::string& from, const std::string& to) override;

    /// The copy has the mode of the original. A copy that fails half way is removed.
    FileResult copy(const std::string& from, const std::string& to) override;

    FileResult remove(const std::string& name) override;
    FileResult sync(const std::string& name) override;
    [[nodiscard]] bool exists(const std::string& name) const override;

    /// Tries to take a write lease, which the kernel grants only when nobody else has the file open, and gives it back
    /// at once. Where a lease cannot be had for another reason (a file of another owner, a file system without leases)
    /// the file counts as free.
    [[nodiscard]] bool in_use(const std::string& name) const override;

    [[nodiscard]] std::optional<CivilTime> modified(const std::string& name) const override;
    [[nodiscard]] std::vector<std::string> entries() const override;
    [[nodiscard]] std::string path(const std::string& name) const override;

private:
    std::string folder_;
};

}  // namespace nimbry::platform
