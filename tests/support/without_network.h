#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace nimbry {

/// From here on this process has no network but a loopback that is down, and its own files as before. For a child that
/// has a single thread. False where the system does not let it.
inline bool leave_the_network() {
    const auto write_to = [](const char* file, const std::string& text) {
        const int opened = open(file, O_WRONLY);
        const bool written = opened >= 0 && write(opened, text.data(), text.size()) > 0;
        if (opened >= 0) close(opened);
        return written;
    };
    const auto itself = [](unsigned id) { return std::to_string(id) + " " + std::to_string(id) + " 1"; };
    const std::string user = itself(geteuid());
    const std::string group = itself(getegid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0 && write_to("/proc/self/setgroups", "deny") &&
           write_to("/proc/self/uid_map", user) && write_to("/proc/self/gid_map", group);
}

/// What `question` says in a child without a network: 0 no, 1 yes, 2 when there is no such child to be had.
template <class Question>
int asked_without_network(Question question) {
    const pid_t child = fork();
    if (child == 0) _exit(leave_the_network() ? static_cast<int>(question()) : 2);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return 2;
    return WEXITSTATUS(status);
}

}  // namespace nimbry
