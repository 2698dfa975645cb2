#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/ports/clock.h"
#include "engine/ports/files.h"
#include "tests/world/journal.h"

namespace nimbry::test {

/// A disk in memory that keeps every promise of the Files port, fails where the test says, remembers every call, and
/// can lose its power.
///
/// The program's folder is there from the start; any other folder must be added first. Names compare with case.
class MemoryFiles : public Files {
public:
    /// `clock` gives the dates of change; `journal`, if any, gets one line a changing call. Both must outlive this
    /// object.
    explicit MemoryFiles(const Clock& clock, Journal* journal = nullptr);

    FileResult read(const std::string& name, std::string& bytes,
                    std::size_t limit = static_cast<std::size_t>(-1)) const override;
    FileResult append(const std::string& name, std::string_view bytes) override;
    FileResult rewrite(const std::string& name, std::string_view bytes) override;
    FileResult replace(const std::string& name, std::string_view bytes, bool private_to_owner = false) override;
    FileResult rename(const std::string& from, const std::string& to) override;
    FileResult copy(const std::string& from, const std::string& to) override;
    FileResult remove(const std::string& name) override;
    FileResult sync(const std::string& name) override;
    [[nodiscard]] bool exists(const std::string& name) const override;
    [[nodiscard]] bool in_use(const std::string& name) const override;
    [[nodiscard]] std::optional<CivilTime> modified(const std::string& name) const override;
    [[nodiscard]] std::vector<std::string> entries() const override;
    [[nodiscard]] std::string path(const std::string& name) const override;

    // Setting the scene. None of these is a call of the program: they fail nothing, count nothing, and are safe on the
    // disk at once.

    /// Puts a file there, or changes it.
    void put(const std::string& name, std::string_view bytes);
    /// Takes a file away.
    void take_away(const std::string& name);
    /// Makes a folder, for absolute names and names with a separator.
    void add_folder(const std::string& name);
    /// Another program opens the file, or closes it.
    void set_in_use(const std::string& name, bool in_use);

    // Looking.

    /// The contents; "" for a missing file (see exists()).
    [[nodiscard]] std::string contents(const std::string& name) const;
    /// Every file of the disk, sorted.
    [[nodiscard]] std::vector<std::string> names() const;
    /// True when the file was once replaced with `private_to_owner`.
    [[nodiscard]] bool is_private(const std::string& name) const;

    /// One call of the program, in order. `other` is the target of a rename or copy.
    struct Call {
        std::string operation;  ///< "read", "append", "rewrite", "replace", "rename", "copy", "remove", "sync"
        std::string name, other;
        std::size_t bytes = 0;  ///< how many were read or given
        FileResult result = FileResult::ok;
        Instant at;
    };
    [[nodiscard]] const std::vector<Call>& calls() const { return calls_; }
    void forget_calls() { calls_.clear(); }

    /// From now on `look` sees each changing call before it changes anything; a copy of this object is the disk of that
    /// moment.
    void before_each_change(std::function<void(const Call&)> look) { look_ = std::move(look); }

    // Failing.

    /// The n-th call from now fails (1: the next). Several may be set.
    void fail_call(std::size_t n, FileResult result);
    /// Every call on this name fails, read too, until allow().
    void refuse(const std::string& name, FileResult result);
    /// Every changing call fails, as on a full or read-only disk, until allow().
    void refuse_changes(FileResult result);
    /// The disk is well again.
    void allow();

    /// The power fails and comes back: each file is again what it was at its last sync(), and a file that never had one
    /// is gone. A rename or removal that no sync() followed has not happened. (A disk may keep more than that, never
    /// less.)
    void power_cut();

    /// The same on a disk as disks are. `choice` decides for each file that was changed since its last sync(), whatever
    /// became of the others: it is as it was then, as it is now, or torn between the two; and for each rename whether
    /// it has happened. The same `choice` gives the same disk. What is synced stays.
    void power_cut(std::uint32_t choice);

private:
    struct File {
        std::string bytes;
        CivilTime modified;
        bool private_to_owner = false;
    };
    using Folder = std::map<std::string, File>;

    FileResult record(Call call, FileResult own) const;
    [[nodiscard]] std::optional<FileResult> wanted_failure(const Call& call) const;
    [[nodiscard]] FileResult place_for(const std::string& name) const;
    void set(const std::string& name, std::string_view bytes);
    void renamed_for_good(const std::string& to);

    const Clock& clock_;
    Journal* journal_;
    Folder files_;
    Folder durable_;
    std::map<std::string, std::string> renamed_from_;  // by the new name: renames that a power cut would undo
    std::set<std::string> folders_;
    std::set<std::string> in_use_;
    std::function<void(const Call&)> look_;

    mutable std::vector<Call> calls_;
    mutable std::size_t counted_ = 0;
    std::map<std::size_t, FileResult> failing_calls_;
    std::map<std::string, FileResult> refused_;
    std::optional<FileResult> changes_refused_;
};

}  // namespace nimbry::test
