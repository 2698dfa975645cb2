#include "engine/core/program_log.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry {
namespace {

// The computer's clock stands at 5 October 2026, 14:00:00.
class ProgramLogs : public testing::Test {
protected:
    std::string bytes() const { return disk.contents("nbyprog.log"); }

    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    WeatherState state;
    ProgramLog log{state, clock, disk};
};

TEST_F(ProgramLogs, BeginsARunWithASeparatorAndADatedLine) {
    log.started();
    EXPECT_EQ(bytes(),
              "****************************************************\r\n"
              "05 Oct 2026 14:00:00 (Computer time) Program started\r\n");
    EXPECT_EQ(bytes().find('\r'), 52U);
}

TEST_F(ProgramLogs, DatesAnEventByTheComputerBeforeTheStationsTimeIsKnown) {
    log.event(" Communications error - no data being received");
    EXPECT_EQ(bytes(), "05 Oct 2026 14:00:00 (Computer time) Communications error - no data being received\r\n");
    EXPECT_EQ(log.when(), "05 Oct 2026 14:00:00 (Computer time)");
}

TEST_F(ProgramLogs, DatesAnEventByTheStationOnceItsTimeIsKnownHoweverOldItIs) {
    state.readings.dtvar = parse_stamp("4 Oct 2026 23:59:10");
    log.event(" A wind sensor error occurred");
    clock.advance(std::chrono::hours{5});
    log.event(" Communications error - no data being received");
    EXPECT_EQ(bytes(),
              "04 Oct 2026 23:59:10 A wind sensor error occurred\r\n"
              "04 Oct 2026 23:59:10 Communications error - no data being received\r\n");
    EXPECT_EQ(log.when(), "04 Oct 2026 23:59:10");
}

TEST_F(ProgramLogs, DatesSomeEventsByTheComputerWhateverTheStationSays) {
    state.readings.dtvar = parse_stamp("4 Oct 2026 23:59:10");
    log.computer_event(" Serial port lost");
    EXPECT_EQ(bytes(), "05 Oct 2026 14:00:00 (Computer time) Serial port lost\r\n");
}

TEST_F(ProgramLogs, AppendEachEventWithOneCallAndChangeNothingBeforeIt) {
    disk.put("nbyprog.log", "an old line without an end");
    log.event(" x");
    log.started();
    EXPECT_EQ(bytes().substr(0, 26), "an old line without an end");
    std::string changes;
    for (const auto& call : disk.calls())
        if (call.operation != "read") changes += call.operation + " ";
    EXPECT_EQ(changes, "append append ");
}

TEST_F(ProgramLogs, ALineThatAPowerCutHasTornStandsAboveTheStartByItself) {
    for (const char* torn : {"05 Oct 2026 13:00:0", "05 Oct 2026 13:00:0\r", "05 Oct 2026 13:00:0\r\n"}) {
        SCOPED_TRACE(torn);
        disk.put("nbyprog.log", torn);
        log.started();
        EXPECT_EQ(bytes(),
                  "05 Oct 2026 13:00:0\r\n"
                  "****************************************************\r\n"
                  "05 Oct 2026 14:00:00 (Computer time) Program started\r\n");
    }
}

TEST_F(ProgramLogs, RaiseTheDisksErrorInARoutine) {
    struct Case {
        FileResult result;
        ErrorNumber number;
    };
    for (const auto& [result, number] :
         {Case{FileResult::disk_full, ErrorNumber::disk_full}, Case{FileResult::permission, ErrorNumber::permission},
          Case{FileResult::not_a_file, ErrorNumber::path}}) {
        disk.refuse_changes(result);
        for (const auto& write :
             {+[](ProgramLog& one) { one.event(" x"); }, +[](ProgramLog& one) { one.computer_event(" x"); },
              +[](ProgramLog& one) { one.started(); }}) {
            try {
                write(log);
                FAIL() << "no error";
            } catch (const RunTimeError& error) {
                EXPECT_EQ(error.number, number);
            }
        }
    }
    EXPECT_EQ(bytes(), "");
}

TEST_F(ProgramLogs, PassOverTheDisksErrorOnTheWayOut) {
    disk.refuse_changes(FileResult::disk_full);
    log.event_or_nothing(" x");
    EXPECT_EQ(disk.calls().size(), 1U) << "once, never again";
    disk.allow();
    log.event_or_nothing(" y");
    EXPECT_EQ(bytes(), "05 Oct 2026 14:00:00 (Computer time) y\r\n");
}

}  // namespace
}  // namespace nimbry
