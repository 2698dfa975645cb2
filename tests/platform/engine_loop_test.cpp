#include "platform/engine_loop.h"

#include <gtest/gtest.h>

#include <csignal>

#include "engine/station/train_writer.h"
#include "platform/qt_datagrams.h"
#include "platform/qt_streams.h"
#include "platform/stderr_notices.h"
#include "platform/system_clock.h"
#include "platform/system_desktop.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/world/memory_files.h"
#include "tests/world/scripted_transfers.h"

namespace nimbry::platform {
namespace {

using namespace std::chrono_literals;

/// An engine on the real event loop and a real line, with its disk in memory. The test's steps look every few
/// milliseconds what the engine has come to.
class EngineLoopTest : public testing::Test {
protected:
    /// Runs the loop to its end; `step` is called all the time once the engine listens.
    int run(const std::function<void()>& step) {
        QTimer watching;
        QObject::connect(&watching, &QTimer::timeout, &watching, [&] {
            if (engine.state().comm.SerComReady) step();
        });
        watching.start(5ms);
        Engine::StartOptions options;
        options.device = station.device();
        return loop.run(options);
    }

    [[nodiscard]] bool log_ends_with(const std::string& text) const {
        return files.contents("nbyprog.log").ends_with(text + "\r\n");
    }

    PseudoTerminal station;
    SystemClock clock;
    LoopPauses pauses{clock};
    test::MemoryFiles files{clock};
    QtSerialLine line;
    QtDatagrams datasock;
    QtStreams streams;
    StderrNotices notices;
    SilentSounds sounds;
    SystemDesktop desktop;
    test::ScriptedTransfers transfers{clock};
    Engine engine{Ports{clock, pauses, files, line, datasock, streams, notices, sounds, desktop, transfers}};
    EngineLoop loop{engine, pauses, clock, {line, datasock, streams}};
};

TEST_F(EngineLoopTest, TheBytesOfTheLineReachTheEngineAndSettleByItsTimers) {
    bool sent = false;
    EXPECT_EQ(run([&] {
                  if (!std::exchange(sent, true)) station.send(write_train({}));
                  if (engine.state().comm.counters.trains == 1) std::raise(SIGINT);
              }),
              0);
    EXPECT_EQ(engine.state().comm.counters.trains, 1U);
    EXPECT_FALSE(line.is_open());
}

TEST_F(EngineLoopTest, AnInterruptIsTheMenusExit) {
    EXPECT_EQ(run([] { std::raise(SIGINT); }), 0);
    EXPECT_TRUE(log_ends_with(" Program stopped, normal exit"));
}

TEST_F(EngineLoopTest, ATerminationIsTheWindowsClose) {
    EXPECT_EQ(run([] { std::raise(SIGTERM); }), 0);
    EXPECT_TRUE(log_ends_with(" Program stopped, forced exit (Windows closing)"));
}

TEST_F(EngineLoopTest, ALostLineReachesTheEngine) {
    QTimer watching;
    QObject::connect(&watching, &QTimer::timeout, &watching, [&] {
        if (log_ends_with(" Serial port lost")) std::raise(SIGINT);
    });
    watching.start(5ms);
    EXPECT_EQ(run([&] { station.unplug(); }), 0);
    EXPECT_FALSE(line.is_open());
}

TEST_F(EngineLoopTest, AnUnrecoverableErrorEndsTheLoopWithStatus1) {
    files.refuse_changes(FileResult::disk_full);
    testing::internal::CaptureStderr();
    EXPECT_EQ(run([] {}), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Nimbry: Unrecoverable error 61 Disk full encountered in Load. / Nimbry will now exit.\n");
}

// A click or a request starts a conversation of its own; what it changes in the engine is seen without being told.
TEST_F(EngineLoopTest, AConversationThatOthersStartCanEndTheProgram) {
    EXPECT_EQ(run([this] { pauses.start([this] { engine.menu_exit(); }); }), 0);
    EXPECT_TRUE(log_ends_with(" Program stopped, normal exit"));
}

TEST_F(EngineLoopTest, AConversationThatWaitsIsUnwoundBeforeTheLoopReturns) {
    bool begun = false;
    bool unwound = false;
    EXPECT_EQ(run([&] {
                  if (std::exchange(begun, true)) return;
                  pauses.start([&] {
                      const Unhurried unhurried(pauses);
                      try {
                          pauses.pause(1h);
                      } catch (const WaitCancelled&) {
                          unwound = true;
                          throw;
                      }
                  });
                  std::raise(SIGINT);
              }),
              0);
    EXPECT_TRUE(unwound);
    EXPECT_EQ(pauses.waiting(), 0U);
}

}  // namespace
}  // namespace nimbry::platform
