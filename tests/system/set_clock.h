#pragma once

#include <chrono>
#include <map>
#include <string>

#include "tests/support/temporary_folder.h"

namespace nimbry::system_test {

/// A computer's clock for the programs that are started with its environment. The test sets it also while they run;
/// between two settings it goes like the true one. The monotonic clock stays the machine's own.
class SetClock {
public:
    /// Right at first.
    SetClock() { put_beside(std::chrono::seconds{0}); }

    /// Where libfaketime is not installed every program has the true clock.
    [[nodiscard]] static bool can_be_had() { return !library().empty(); }

    /// What a program needs in its environment; with a zone of its own when one is named.
    [[nodiscard]] std::map<std::string, std::string> environment(const std::string& zone = "") const;

    /// From now on, or within a second, it stands so far beside the true one.
    void put_beside(std::chrono::seconds ahead) const;
    /// The same, told by the moment that it shows now.
    void show(std::chrono::sys_seconds moment) const;

private:
    static std::string library();

    platform::test::TemporaryFolder folder_;
};

}  // namespace nimbry::system_test
