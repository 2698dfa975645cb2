#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {

/// What nimbryctl said to one question.
struct Said {
    Ending ending;
    std::string out, err;
};

inline Said ask(const std::vector<std::string>& arguments, const Process::Setting& setting = {}) {
    Process nimbryctl(NIMBRYCTL, arguments, setting);
    const Ending ending = nimbryctl.ending();
    return {ending, nimbryctl.standard_output(), nimbryctl.standard_error()};
}

/// A copy that is asked by nimbryctl.
class NimbryctlTest : public testing::Test {
protected:
    /// Asks the copy of the test's folder.
    [[nodiscard]] Said ask_copy(std::vector<std::string> words) const {
        words.insert(words.begin(), {"--dir", folder.path()});
        return ask(words);
    }
    /// Two trains: the second one's readings are shown.
    void send_trains() {
        for (int taken = 1; taken <= 2; ++taken) {
            station.send(train_of_now());
            ASSERT_TRUE(eventually([&] { return copy->frames("trains") == taken; }));
        }
    }
    /// Starts the copy, and lets it take its first trains when `with_trains`.
    void start(bool with_trains = false) {
        folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
        copy.emplace(folder, station.device());
        ASSERT_TRUE(copy->listens());
        if (with_trains) send_trains();
    }

    TemporaryFolder folder;
    StationLine station;
    std::optional<RunningCopy> copy;
};

}  // namespace nimbry::system_test
