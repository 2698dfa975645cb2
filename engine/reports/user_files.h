#pragma once

#include <string>
#include <vector>

#include "engine/ports/files.h"

namespace nimbry {

// Files that the user puts into the program's folder. Somebody who moves a folder here from a system that does not tell
// "MyHtml.html" from "myhtml.html" finds them read all the same.

/// The program's folder as it is at one moment, for many questions.
class UserFiles {
public:
    explicit UserFiles(const Files& files);

    /// The name by which an entry of the folder goes: `name` itself if it is there, else one that differs from it only
    /// in the case of ASCII letters (of several the first in byte order). Empty when there is none.
    [[nodiscard]] std::string find(const std::string& name) const;

private:
    std::vector<std::string> entries_;
};

/// Reads a file of the user's. `not_found` when there is none under any case.
FileResult read_user_file(const Files& files, const std::string& name, std::string& bytes);

}  // namespace nimbry
