#pragma once

#include <optional>
#include <string>

namespace nimbry::platform {

/// What decides where the program's folder is. Paths are bytes of the file system, absolute or relative to the working
/// folder.
struct FolderHints {
    std::optional<std::string> dir;  ///< `--dir`; nothing when it was not given
    std::string home_variable;       ///< NIMBRY_HOME; empty when it is not set
    std::string executable_folder;   ///< where the program itself lies
    std::string data_folder;  ///< the user's data folder (XDG_DATA_HOME, else ~/.local/share); empty: none is known

    /// The hints of the running process.
    [[nodiscard]] static FolderHints of_process(std::optional<std::string> dir);
};

/// The program's folder, or why there is none.
struct ProgramFolder {
    /// Absolute and without links, so that two spellings of one folder give one path; empty on an error.
    std::string path;
    std::string error;  ///< one line for standard error; empty when there is a folder
    explicit operator bool() const { return error.empty(); }
};

/// Finds the folder that holds all files of a copy, "beside the program": `--dir`; else NIMBRY_HOME; else the
/// executable's folder if it holds Nimbry.ini already; else "nimbry" in the user's data folder. With `make_it` a
/// missing one is made (readable by its owner alone if it is the data folder's); without, a missing one is an error.
[[nodiscard]] ProgramFolder program_folder(const FolderHints& hints, bool make_it = true);

}  // namespace nimbry::platform
