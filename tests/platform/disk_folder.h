#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/disk_files.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform::test {

/// While it lives no file can grow beyond a length: the next byte fails as on a full disk.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t longest) {
        ::getrlimit(RLIMIT_FSIZE, &was_);
        const rlimit now{longest, was_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &now);
    }
    ~SmallDisk() { ::setrlimit(RLIMIT_FSIZE, &was_); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit was_{};
};

inline std::string bytes_of_every_kind() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

/// A real folder and the engine's disk on it.
class DiskFolder : public testing::Test {
protected:
    TemporaryFolder folder;
    DiskFiles files{folder.path()};

    [[nodiscard]] std::string read(const std::string& name) const {
        std::string bytes = "left over";
        EXPECT_EQ(files.read(name, bytes), FileResult::ok);
        return bytes;
    }
    [[nodiscard]] mode_t mode_of(const std::string& name) const {
        struct stat facts {};
        EXPECT_EQ(::stat(folder.path(name).c_str(), &facts), 0);
        return facts.st_mode & 07777U;
    }
    /// Every call that needs the file itself, as it answers for `name`.
    struct Named {
        const char* what;
        std::function<FileResult()> call;
    };
    std::vector<Named> calls_on(const std::string& name) {
        return {
            {"read",
             [=, this] {
                 std::string bytes;
                 return files.read(name, bytes);
             }},
            {"append", [=, this] { return files.append(name, "x"); }},
            {"rewrite", [=, this] { return files.rewrite(name, "x"); }},
            {"replace", [=, this] { return files.replace(name, "x"); }},
            {"rename", [=, this] { return files.rename(name, "other name"); }},
            {"copy", [=, this] { return files.copy(name, "other name"); }},
            {"sync", [=, this] { return files.sync(name); }},
        };
    }
};

}  // namespace nimbry::platform::test
