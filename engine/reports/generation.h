#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "engine/core/copy.h"
#include "engine/reports/user_files.h"

namespace nimbry {

// What the generators of pages, reports and mails share.

/// The contents of a template; nothing when there is none. One that is there but cannot be read (no permission, a
/// folder of its name) is told of once, in a balloon and a line of the program log, until it can be read again.
struct Template {
    bool present = false;              ///< something has the name
    std::optional<std::string> bytes;  ///< nothing when it could not be read
};
[[nodiscard]] Template read_template(Copy& copy, const UserFiles& folder, const std::string& name);

/// What a marker is replaced by in one kind of file.
using Resolve = std::function<std::string(std::string_view marker)>;

/// The tags as they stand: what pages, the text report and mails use. `copy` must outlive it.
[[nodiscard]] Resolve plain_tags(const Copy& copy);

/// Fills a template into its work file, from scratch. Throws RunTimeError.
void make_work_file(Files& files, const std::string& work, std::string_view page, const Resolve& resolve);

}  // namespace nimbry
