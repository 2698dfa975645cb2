#include "platform/program_folder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace nimbry::platform {

namespace {

namespace fs = std::filesystem;

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string user_data_folder() {
    // A relative XDG_DATA_HOME is invalid by the rules of that variable and passed over.
    if (std::string xdg = environment("XDG_DATA_HOME"); xdg.starts_with('/')) return xdg;
    std::string home = environment("HOME");
    if (home.empty()) {
        const passwd* user = ::getpwuid(::geteuid());
        if (user != nullptr && user->pw_dir != nullptr) home = user->pw_dir;
    }
    return home.empty() ? std::string() : home + "/.local/share";
}

ProgramFolder refused(const std::string& path, const std::string& why) {
    return {"", "The folder " + path + " cannot be used: " + why};
}

/// The wish among the hints; empty when there is none.
fs::path chosen(const FolderHints& hints) {
    if (hints.dir) return *hints.dir;
    if (!hints.home_variable.empty()) return hints.home_variable;
    std::error_code ignored;
    const fs::path beside = fs::path(hints.executable_folder) / "Nimbry.ini";
    if (!hints.executable_folder.empty() && fs::exists(beside, ignored)) return hints.executable_folder;
    return hints.data_folder.empty() ? fs::path() : fs::path(hints.data_folder) / "nimbry";
}

}  // namespace

FolderHints FolderHints::of_process(std::optional<std::string> dir) {
    std::error_code ignored;
    const fs::path executable = fs::read_symlink("/proc/self/exe", ignored);
    return {std::move(dir), environment("NIMBRY_HOME"), executable.parent_path().string(), user_data_folder()};
}

ProgramFolder program_folder(const FolderHints& hints, bool make_it) {
    if (hints.dir && hints.dir->empty()) return {"", "--dir needs the name of a folder"};
    const fs::path wish = chosen(hints);
    if (wish.empty()) return {"", "There is no home folder: name the program's folder with --dir"};

    std::error_code error;
    fs::file_status status = fs::status(wish, error);
    if (status.type() == fs::file_type::not_found && make_it) {
        error.clear();
        fs::create_directories(wish, error);
        if (error) return refused(wish.string(), error.message());
        const bool users_own = !hints.dir && hints.home_variable.empty();
        if (users_own) fs::permissions(wish, fs::perms::owner_all, error);  // settings hold passwords
        status = fs::status(wish, error);
    }
    if (status.type() == fs::file_type::not_found) return refused(wish.string(), "there is no such folder");
    if (status.type() == fs::file_type::none) return refused(wish.string(), error.message());
    if (status.type() != fs::file_type::directory) return refused(wish.string(), "it is not a folder");

    const fs::path whole = fs::canonical(wish, error);
    if (error) return refused(wish.string(), error.message());
    return {whole.string(), ""};
}

}  // namespace nimbry::platform
