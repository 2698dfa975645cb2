#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace nimbry::platform::test {

/// A real folder of a test, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "nimbry-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = std::filesystem::canonical(name).string();
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string path(const std::string& name) const { return path_ + '/' + name; }

    /// Puts a file there without the program's own means.
    void put(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }

    /// The contents of a file; "" for a missing one.
    [[nodiscard]] std::string contents(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    [[nodiscard]] bool holds(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(path(name)));
    }

    /// How many names lie in it, hidden ones too.
    [[nodiscard]] std::ptrdiff_t count() const {
        return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
    }

private:
    std::string path_;
};

/// While it lives the process has the rights of an ordinary user, also where the tests run as root, who may write
/// everything.
class OrdinaryUser {
public:
    static constexpr uid_t nobody = 65534;
    OrdinaryUser() : was_(::geteuid()) {
        if (was_ == 0 && ::seteuid(nobody) != 0) throw std::runtime_error("rights cannot be given up");
    }
    ~OrdinaryUser() {
        if (::seteuid(was_) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    /// Hands a file or folder to the user that this object makes of root.
    static void give(const std::string& path) {
        if (::geteuid() == 0 && ::chown(path.c_str(), nobody, static_cast<gid_t>(-1)) != 0) {
            throw std::runtime_error("the owner cannot be changed");
        }
    }

private:
    uid_t was_;
};

}  // namespace nimbry::platform::test
