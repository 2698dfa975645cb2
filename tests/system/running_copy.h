#pragma once

#include <sys/types.h>

#include <QJsonObject>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace nimbry::system_test {

using platform::test::TemporaryFolder;

/// How a process ended.
struct Ending {
    bool by_itself = false;  ///< it called exit; otherwise a signal ended it, or it is still running
    int number = -1;         ///< its exit status, or the signal

    friend bool operator==(const Ending&, const Ending&) = default;
};
inline Ending exited(int status) {
    return {true, status};
}
std::ostream& operator<<(std::ostream& out, const Ending& ending);

/// A program of ours as a child process, its two outputs kept in files.
class Process {
public:
    struct Setting {
        std::map<std::string, std::string> environment;  ///< besides the test's own
        std::function<void()> in_child;                  ///< runs before the program does: limits, rights
    };

    /// Starts `program` with `arguments`; its standard input is empty.
    Process(const std::string& program, const std::vector<std::string>& arguments, const Setting& setting = {});
    /// Kills the process if it still runs.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    void signal(int number) const;
    [[nodiscard]] bool runs();
    /// Stops it, and returns once it is off the processor. signal(SIGCONT) lets it go on.
    void stop() const;
    /// Waits, 60 s at most, until it has ended.
    Ending ending();

    [[nodiscard]] std::string standard_output() const { return outputs_.contents("out"); }
    [[nodiscard]] std::string standard_error() const { return outputs_.contents("err"); }

    /// The processor time used so far, seconds.
    [[nodiscard]] double processor_seconds() const;

private:
    TemporaryFolder outputs_;
    pid_t id_;
    bool ended_ = false;
    Ending ending_;
};

/// Looks every few milliseconds, 60 s at most, until `condition` holds. True when it does. The tests wait for what they
/// want to see and never for a time.
bool eventually(const std::function<bool()>& condition);

/// A loopback address of this test run's: all copies of one machine share its ports, so each has an address of its own,
/// and other runs have others. `n` tells the copies of a run apart, 1 to 254.
std::string own_address(int n);

/// nimbryd in a folder of its own.
class RunningCopy : public Process {
public:
    RunningCopy(const TemporaryFolder& folder, const std::string& device, const Setting& setting = {});

    /// Waits until the copy listens on its line.
    [[nodiscard]] bool listens();

    /// The answer of `nimbryctl status --json`; empty when nobody answers.
    [[nodiscard]] QJsonObject status() const;
    /// One of the counted frames in the status: "trains", "lone", ...; -1 when nobody answers.
    [[nodiscard]] int frames(const char* kind) const;

    /// The lines of nbyprog.log so far, without their line ends.
    [[nodiscard]] std::vector<std::string> log() const;
    /// How many lines of the log end in `text`.
    [[nodiscard]] int logged(const std::string& text) const;
    /// The log's last line.
    [[nodiscard]] std::string last_logged() const;

private:
    const TemporaryFolder& folder_;
};

}  // namespace nimbry::system_test
