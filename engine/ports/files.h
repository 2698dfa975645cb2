#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ports/clock.h"

namespace nimbry {

/// How a file operation ended. The run-time error number that people see for each stands in core/run_time_error.h.
enum class FileResult {
    ok,
    not_found,   ///< no such file, or its folder is missing
    exists,      ///< the target of a rename or copy is there already; nothing was changed
    permission,  ///< not allowed, or the disk is read-only
    disk_full,   ///< no room left, or over quota
    not_a_file,  ///< the name belongs to a folder or a device
    failed,      ///< any other input/output error
};

/// The disk, as the program's folder. A name without a leading separator lies in that folder; an absolute name (the
/// local-save folder) is taken as it is. Contents are bytes; nothing is converted. No call waits for another program:
/// see in_use(). Nothing is held open between calls.
class Files {
public:
    virtual ~Files() = default;

    /// Reads a whole file into `bytes`, or its first `limit` bytes. On failure `bytes` is empty.
    virtual FileResult read(const std::string& name, std::string& bytes,
                            std::size_t limit = static_cast<std::size_t>(-1)) const = 0;

    /// Adds `bytes` at the end, making the file if it is missing. One open, one write, one close. After a failure that
    /// wrote a part, that part is cut off again.
    virtual FileResult append(const std::string& name, std::string_view bytes) = 0;

    /// Overwrites the file in place, making it if it is missing: opened without truncation, written in one call, then
    /// cut to the new length. A kill in the middle leaves a file of at least the shorter length, never an empty one.
    virtual FileResult rewrite(const std::string& name, std::string_view bytes) = 0;

    /// Replaces the file as a whole: a temporary beside it is written, synced to the disk and renamed over it. Owner
    /// and mode of an existing file are kept, a new one gets the process's default; with `private_to_owner` nobody else
    /// has any access to it from then on. A reader sees the old or the new contents.
    virtual FileResult replace(const std::string& name, std::string_view bytes, bool private_to_owner = false) = 0;

    /// Gives a file another name. `exists` when the new name is taken: it is never overwritten.
    virtual FileResult rename(const std::string& from, const std::string& to) = 0;

    /// Copies a file to a new name. `exists` when that name is taken.
    virtual FileResult copy(const std::string& from, const std::string& to) = 0;

    /// Deletes a file. `not_found` when there is none.
    virtual FileResult remove(const std::string& name) = 0;

    /// Makes sure that what was written to the file, and its name, survive a power cut.
    virtual FileResult sync(const std::string& name) = 0;

    /// True for an ordinary file of that name.
    [[nodiscard]] virtual bool exists(const std::string& name) const = 0;

    /// True while another program has the file open; false for a missing file.
    [[nodiscard]] virtual bool in_use(const std::string& name) const = 0;

    /// The computer's civil time of the last change; nothing for a missing file.
    [[nodiscard]] virtual std::optional<CivilTime> modified(const std::string& name) const = 0;

    /// The names of what lies in the program's folder, files and folders alike, in no order.
    [[nodiscard]] virtual std::vector<std::string> entries() const = 0;

    /// The full path of a name, for messages and for handing to another program.
    [[nodiscard]] virtual std::string path(const std::string& name) const = 0;
};

}  // namespace nimbry
