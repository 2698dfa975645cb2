#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/event.h"
#include "engine/core/exits.h"
#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* last_sentence = "\r\nNimbry will now exit.";

TEST(Unrecoverable, TellsTheNumberAndTheRoutineAndLeavesWithoutSaves) {
    StartedWorld world;
    world.journal.clear();
    // A save that runs shows whether the exit looks at it.
    world.state().run.savingrafs.set();
    world.act([&] { run_event(world.copy(), "OnComm", [] { throw RunTimeError{ErrorNumber::index}; }); });
    ASSERT_EQ(world.notices.boxes.size(), 1u);
    const MessageBox& box = world.notices.boxes[0].what;
    EXPECT_EQ(box.title, "Nimbry");
    EXPECT_EQ(box.text, std::string("Unrecoverable error 9 encountered in OnComm.") + last_sentence);
    EXPECT_EQ(box.choices, Choices::ok);
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 9 encountered in OnComm.");
    EXPECT_THAT(world.journal.lines(),
                ElementsAre("box Nimbry", "sound click.WAV", "append nbyprog.log", "line close"));
    EXPECT_THAT(
        world.log(),
        ElementsAre(
            "05 Oct 2026 14:00:02 (Computer time) Program stopped, Unrecoverable error 9 encountered in OnComm."));
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 1);
}

TEST(Unrecoverable, AnInnerRoutinesTagIsKept) {
    StartedWorld world;
    world.act([&] {
        run_event(world.copy(), "OnComm",
                  [] { tagged("8F group", [] { throw RunTimeError{ErrorNumber::invalid_argument}; }); });
    });
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 5 encountered in 8F group.");
}

TEST(Unrecoverable, WhileTheBoxStandsNothingElseIsDoneAndNoSecondBoxIsShown) {
    StartedWorld world;
    world.notices.will_answer(Answer::ok, 5min);
    world.act([&] { run_event(world.copy(), "OnComm", [] { throw RunTimeError{}; }); });
    world.send_train();
    world.act([&] { run_event(world.copy(), "OnComm", [] { throw RunTimeError{}; }); });
    world.act([&] { report_unrecoverable(world.copy(), {ErrorNumber::overflow, "9F group"}); });
    world.run_for(4min);
    EXPECT_EQ(world.notices.boxes.size(), 1u);
    EXPECT_FALSE(world.engine.gone());
    EXPECT_EQ(world.state().comm.counters.trains, 0u) << "nothing is decoded any more";
    EXPECT_THAT(world.notices.balloons, IsEmpty());
    world.run_for(1min);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 440 encountered in OnComm.");
}

TEST(Unrecoverable, AWindowThatIsClosedMeanwhileKeepsTheErrorsText) {
    StartedWorld world;
    world.notices.will_answer(Answer::ok, 5min);
    world.act([&] { run_event(world.copy(), "initprog", [] { throw RunTimeError{ErrorNumber::path}; }); });
    world.run_for(1s);
    world.act([&] { world.engine.window_close(); });
    EXPECT_TRUE(world.engine.gone());
    world.run_for(10min);
    EXPECT_THAT(
        world.log(),
        ElementsAre(
            "05 Oct 2026 14:00:03 (Computer time) Program stopped, Unrecoverable error 75 encountered in initprog."));
    EXPECT_EQ(world.engine.exit_status(), 1);
}

TEST(Unrecoverable, AnErrorDuringAnExitIsPassedOver) {
    StartedWorld world;
    world.state().run.savingrafs.set();
    world.act([&] { world.engine.menu_exit(); });
    world.act([&] { report_unrecoverable(world.copy(), {ErrorNumber::index, "OnComm"}); });
    EXPECT_THAT(world.notices.boxes, IsEmpty());
    world.state().run.savingrafs.clear();
    world.run_for(1s);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.log().back(), "05 Oct 2026 14:00:02 (Computer time) Program stopped, normal exit");
    EXPECT_EQ(world.engine.exit_status(), 0);
}

struct NumberCase {
    const char* what;
    FileResult result;
    const char* sentence;
};

TEST(Unrecoverable, ALogThatCannotBeStartedNamesTheNumberAndWhatItMeans) {
    const NumberCase cases[] = {
        {"full disk", FileResult::disk_full, "Unrecoverable error 61 Disk full encountered in Load."},
        {"no right", FileResult::permission, "Unrecoverable error 70 Permission denied encountered in Load."},
        {"a folder", FileResult::not_a_file, "Unrecoverable error 75 Path/File access error encountered in Load."},
        {"anything", FileResult::failed, "Unrecoverable error 52 Bad file name or number encountered in Load."},
    };
    for (const NumberCase& row : cases) {
        SCOPED_TRACE(row.what);
        World world;
        world.files.refuse("nbyprog.log", row.result);
        world.start();
        ASSERT_EQ(world.notices.boxes.size(), 1u);
        EXPECT_EQ(world.notices.boxes[0].what.text, std::string(row.sentence) + last_sentence);
        EXPECT_TRUE(world.engine.gone());
        EXPECT_EQ(world.engine.exit_status(), 1);
        EXPECT_FALSE(world.files.exists("nbyprog.log"));
        EXPECT_THAT(world.line.attempts(), IsEmpty());
    }
}

TEST(Unrecoverable, AFullDiskIsReportedOnceAndItsStopLineIsPassedOver) {
    StartedWorld world;
    world.files.refuse_changes(FileResult::disk_full);
    world.run_for(10min);  // the no-data watch wants to log
    ASSERT_EQ(world.notices.boxes.size(), 1u);
    EXPECT_EQ(world.notices.boxes[0].what.text,
              std::string("Unrecoverable error 61 encountered in TimComFail.") + last_sentence);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 1);
    EXPECT_THAT(world.log(), IsEmpty());
}

// Each routine's tag, as a log that cannot be written brings it out.

/// What goes wrong with the station, after two sound trains.
struct TagCase {
    const char* tag;
    void (*spoil)(StationReadings&);
};

class TagOfAGroup : public testing::TestWithParam<TagCase> {};

TEST_P(TagOfAGroup, StandsInTheStopLine) {
    StartedWorld world;
    world.send_trains(2);
    world.files.refuse("nbyprog.log", FileResult::disk_full);
    StationReadings readings;
    GetParam().spoil(readings);
    world.send_trains(2, readings);  // a fault is logged when it is seen for the second time
    EXPECT_EQ(world.state().run.ExitWord, std::string("Unrecoverable error 61 encountered in ") + GetParam().tag + ".");
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.notices.boxes.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(
    OfATrain, TagOfAGroup,
    testing::Values(TagCase{"8F group", [](StationReadings& r) { r.humidity.outdoor_fault = true; }},
                    TagCase{"9F group", [](StationReadings& r) { r.temperature.outdoor_fault = true; }},
                    TagCase{"AF group", [](StationReadings& r) { r.barometer.hpa = 795; }},
                    TagCase{"BF group", [](StationReadings& r) { r.rain.fault = true; }},
                    TagCase{"CF Group", [](StationReadings& r) { r.wind.fault_bits = 4; }}),
    [](const auto& param) { return std::string(param.param.tag).substr(0, 2); });

TEST(TagOfARoutine, ALoneWindGroupsIsWgGroup) {
    StartedWorld world;
    world.send_trains(2);
    world.files.refuse("nbyprog.log", FileResult::disk_full);
    StationReadings readings;
    readings.wind.fault_bits = 4;
    world.deliver(write_lone_wind(readings));
    world.deliver(write_lone_wind(readings));
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 61 encountered in WG group.");
}

TEST(TagOfARoutine, OutdoorHumidityZeroEndsTheProgramInTheBarometersGroup) {
    StartedWorld world;
    world.send_trains(2);
    StationReadings readings;
    readings.humidity.outdoor = 0;
    world.send_train(readings, civil_time({2026, 10, 5, 14, 0, 30}));
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:00:30 Program stopped, Unrecoverable error 5 encountered in AF group."));
    EXPECT_EQ(world.engine.exit_status(), 1);
    ASSERT_EQ(world.notices.boxes.size(), 1u);
    EXPECT_EQ(world.notices.boxes[0].what.text,
              "Unrecoverable error 5 encountered in AF group.\r\nNimbry will now exit.");
    EXPECT_FALSE(world.files.exists("nimbrTDay.log")) << "such an end saves nothing";
}

TEST(TagOfARoutine, APortThatIsLostSpeaksForOnComm) {
    StartedWorld world;
    world.files.refuse("nbyprog.log", FileResult::disk_full);
    world.unplug();
    world.run_for(1s);
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 61 encountered in OnComm.");
}

TEST(TagOfARoutine, APortThatCannotBeOpenedSpeaksForInitprog) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.answer_opens({PortOpenResult::ok, PortOpenResult::failed});
    world.begin_start();
    world.files.refuse("nbyprog.log", FileResult::disk_full);
    world.run_for(1s);
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 61 encountered in initprog.");
}

TEST(TagOfARoutine, TheRegularSaveSpeaksForTheCycle) {
    StartedWorld world;
    world.files.refuse("nimbrTDay.log", FileResult::disk_full);
    world.send_trains(29);
    EXPECT_FALSE(world.state().run.HaveError);
    world.send_trains(1);
    EXPECT_EQ(world.state().run.ExitWord, "Unrecoverable error 61 encountered in process routine.");
    EXPECT_EQ(world.engine.exit_status(), 1);
}

}  // namespace
}  // namespace nimbry::test
