#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "engine/control/verbs.h"
#include "tests/engine/control/recording_asker.h"
#include "tests/world/world.h"

namespace nimbry::test {

using Words = std::vector<std::string>;

/// A running copy that is asked as nimbryctl asks it.
class VerbsTest : public testing::Test {
protected:
    VerbsTest() {
        world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
        world.start();
    }
    /// Asks as a caller does, in a conversation of its own, and lets it end.
    VerbStatus ask(const Words& words) {
        asker = {};
        auto status = VerbStatus::failed;
        world.act([&] { status = answer_request(world.copy(), words, asker); });
        world.run_for(std::chrono::seconds{1});
        return status;
    }
    [[nodiscard]] std::string complaint() const { return asker.complaints.empty() ? "" : asker.complaints.front(); }

    World world;
    RecordingAsker asker;
};

}  // namespace nimbry::test
