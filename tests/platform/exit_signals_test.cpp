#include "platform/exit_signals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/platform/event_loop.h"

namespace nimbry::platform {
namespace {

TEST(ExitSignals, EachSignalBecomesItsEventInTheirOrder) {
    std::string heard;
    const ExitSignals watch([&] { heard += "interrupted "; }, [&] { heard += "terminated "; });
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGINT}) std::raise(number);
    EXPECT_EQ(heard, "") << "not from inside the signal handler";
    EXPECT_TRUE(run_events_until([&] { return heard == "terminated interrupted terminated interrupted "; })) << heard;
}

TEST(ExitSignals, AFloodOfSignalsNeitherBlocksNorEndsTheProgram) {
    int heard = 0;
    const ExitSignals watch([&] { ++heard; }, [] {});
    for (int n = 0; n < 100'000; ++n) std::raise(SIGINT);
    EXPECT_TRUE(run_events_until([&] { return heard > 0; }));
}

TEST(ExitSignals, ASignalAfterTheEndIsIgnored) {
    const auto raise_them_afterwards = [] {
        {
            const ExitSignals watch([] {}, [] {});
        }
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ}) std::raise(number);
        _exit(0);
    };
    EXPECT_EXIT(raise_them_afterwards(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace nimbry::platform
