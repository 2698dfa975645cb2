#include "engine/control/verbs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "engine/control/panel_table.h"
#include "engine/control/verb_list.h"
#include "engine/core/exits.h"
#include "engine/displays/box_list.h"
#include "engine/graphs/graph_svg.h"
#include "tests/engine/control/verbs_fixture.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

TEST_F(VerbsTest, EveryVerbOfTheHelpIsAnsweredAndNoOther) {
    for (const VerbUsage& verb : verb_list()) {
        if (verb.name == "stop") continue;
        EXPECT_EQ(ask({std::string(verb.name), "--no-such-switch"}), VerbStatus::bad_usage) << verb.name;
        EXPECT_EQ(complaint(), usage_line(verb));
    }
    EXPECT_EQ(ask({"tell"}), VerbStatus::bad_usage);
    EXPECT_EQ(complaint(), "unknown verb tell");
    EXPECT_EQ(ask({}), VerbStatus::bad_usage);
    EXPECT_EQ(verb_named("tell"), nullptr);
}

TEST_F(VerbsTest, BoxesPrintsEveryBoxInItsOrderOneALine) {
    world.send_trains(2);
    EXPECT_EQ(ask({"boxes"}), VerbStatus::done);
    EXPECT_EQ(static_cast<std::size_t>(std::count(asker.out.begin(), asker.out.end(), '\n')),
              named_boxes(world.state()).size());
    EXPECT_TRUE(asker.out.starts_with("TxtTime\t14:00:12\nTxtDate\t"));
    EXPECT_NE(asker.out.find("\nText2(0)\t+12.3 °C\n"), std::string::npos);
}

TEST_F(VerbsTest, BoxesPrintsTheNamedOnesInTheOrderAskedFor) {
    world.panel().Text2[0].text = "one\r\ntwo\tthree";
    world.panel().TxtTime.text = "14:00:00";
    EXPECT_EQ(ask({"boxes", "Text2(0)", "TxtTime"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "Text2(0)\tone / two three\nTxtTime\t14:00:00\n");
    EXPECT_EQ(ask({"boxes", "TxtTime", "Text3"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "There is no box Text3");
    EXPECT_EQ(asker.out, "");
}

TEST_F(VerbsTest, BoxesTellsAllOfABoxAsJson) {
    Box& box = world.panel().Text2[0];
    box = {"+1 \260C", 255, 8454016, "a \"tip\"", "two\r\nlines", true, false, true};
    EXPECT_EQ(ask({"boxes", "--json", "Text2(0)"}), VerbStatus::done);
    EXPECT_EQ(asker.out,
              R"j([{"name":"Text2(0)","text":"+1 °C","fore":255,"back":8454016,"visible":true,"enabled":false,)j"
              R"j("checked":true,"tip":"a \"tip\"","balloon":"two\r\nlines"}])j"
              "\n");
}

TEST_F(VerbsTest, StatusIsToldAsLinesAndAsJson) {
    EXPECT_EQ(ask({"status"}), VerbStatus::done);
    EXPECT_TRUE(asker.out.starts_with("version\t2.02\nfolder\t"));
    EXPECT_EQ(ask({"status", "--json"}), VerbStatus::done);
    EXPECT_TRUE(asker.out.starts_with(R"({"version":"2.02","folder":")"));
    EXPECT_EQ(ask({"status", "now"}), VerbStatus::bad_usage);
}

TEST_F(VerbsTest, NoticesAreToldOldestFirst) {
    EXPECT_EQ(ask({"notices", "--json"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "[]\n");
    EXPECT_EQ(ask({"notices"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "");

    // Five seconds after the usual beginning: two of the start, three asked for here.
    world.run_for(1s);
    world.copy().ports.notices.balloon({.title = "Title", .text = "one\r\ntwo"});
    world.run_for(60s);
    world.copy().ports.notices.box({.text = "30 \260C"});
    EXPECT_EQ(ask({"notices"}), VerbStatus::done);
    EXPECT_EQ(
        asker.out,
        "05 Oct 2026 14:00:05\tTitle\tone / two\n05 Oct 2026 14:01:00\tComms Error\tNo data is being received from "
        "the weather station / or the data being received is faulty.\n05 Oct 2026 14:01:05\tNimbry\t30 °C\n")
        << "the second is the watch for data";
    EXPECT_EQ(ask({"notices", "--json"}), VerbStatus::done);
    EXPECT_TRUE(asker.out.starts_with(R"([{"time":"05 Oct 2026 14:00:05","title":"Title","text":"one\r\ntwo"},)"
                                      "\n {"))
        << asker.out;
    EXPECT_TRUE(asker.out.ends_with(R"({"time":"05 Oct 2026 14:01:05","title":"Nimbry","text":"30 °C"}])"
                                    "\n"));
}

TEST_F(VerbsTest, ThePanelIsPrintedOnceWhenThatIsAskedFor) {
    EXPECT_EQ(ask({"panel", "--once"}), VerbStatus::done);
    ASSERT_EQ(asker.screens.size(), 1U);
    EXPECT_NE(asker.screens[0].front().find("Program Starting"), std::string::npos);
    EXPECT_EQ(asker.out, "");
}

TEST_F(VerbsTest, ThePanelIsShownAgainWhenItChangesUntilTheAskerGoes) {
    world.act([&] { (void)answer_request(world.copy(), {"panel"}, asker); });
    world.run_for(5s);
    ASSERT_EQ(asker.screens.size(), 1U) << "nothing has changed";
    world.send_train();
    world.run_for(1s);
    EXPECT_EQ(asker.screens.size(), 2U);
    world.send_train();
    world.run_for(1s);
    ASSERT_EQ(asker.screens.size(), 3U);
    EXPECT_NE(asker.screens.back().front().find("+12.3 °C"), std::string::npos);
    EXPECT_EQ(asker.screens.back(),
              (Words{panel_table(world.state(), PanelLayout::wide), panel_table(world.state(), PanelLayout::narrow)}));
    EXPECT_EQ(world.pauses.waiting(), 1U);
    asker.there = false;
    world.run_for(1s);
    EXPECT_EQ(world.pauses.waiting(), 0U);
}

TEST_F(VerbsTest, AGraphThatIsNotKnownIsAnsweredWithTheSixNamesAndTheSizes) {
    for (const Words& words : {Words{"graph", "snow"}, Words{"graph"}, Words{"graph", "wind", "--size", "10x10"}}) {
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
        ASSERT_EQ(asker.complaints.size(), 1U);
        for (int n = 0; n < graph_count; ++n)
            EXPECT_NE(complaint().find(graph_name(static_cast<GraphKind>(n))), std::string::npos) << complaint();
        for (const PictureSize& size : {least_picture, greatest_picture}) {
            const std::string text = std::to_string(size.width) + "x" + std::to_string(size.height);
            EXPECT_NE(complaint().find(text), std::string::npos) << complaint();
        }
    }
}

TEST_F(VerbsTest, AnExitEndsAPanel) {
    world.act([&] { (void)answer_request(world.copy(), {"panel"}, asker); });
    world.act([&] { world.engine.menu_exit(); });
    world.run_for(1s);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.pauses.waiting(), 0U);
}

TEST_F(VerbsTest, GetTellsTheValueInForceOfAnyKnownKey) {
    struct Case {
        const char* what;
        Words words;
        const char* value;
    };
    for (const Case& c : {Case{"from the file", {"get", "Main", "HasRun"}, "True\n"},
                          Case{"a default", {"get", "Alarms", "ATempHi"}, "37.8\n"},
                          Case{"in any case of letters", {"get", "ALARMS", "atemphi"}, "37.8\n"},
                          Case{"a default of section Main", {"get", "Main", "LogMin"}, "15\n"},
                          Case{"an entry of a list that is not there", {"get", "Main", "iplist(1)"}, "\n"}}) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(ask(c.words), VerbStatus::done);
        EXPECT_EQ(asker.out, c.value);
    }
}

TEST_F(VerbsTest, PasswordsAreSetAndToldPlainAndStandInTheFileAsTheirKeysDo) {
    EXPECT_EQ(ask({"set", "FTP", "ftppass", "secr\xE9t"}), VerbStatus::done);
    EXPECT_EQ(world.state().publish.NimbryFTPSetup.FTPPass, "secr\xC3\xA9t") << "servers expect UTF-8";
    // c * 2 + 3; the two bytes of the letter beyond take three each.
    EXPECT_EQ(world.setting("FTP", "FTPPass"), "\xE9\xCD\xC9\xE7\x80\x58\x46\x80\x54\x52\xEB");
    EXPECT_EQ(ask({"get", "FTP", "FTPPass"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "secr\xC3\xA9t\n");
    EXPECT_EQ(ask({"set", "FTP", "WUpass", "plain"}), VerbStatus::done);
    EXPECT_EQ(world.setting("FTP", "WUpass"), "plain");
}

TEST_F(VerbsTest, WhatTheFileLeavesInDoubtIsToldAsItWasSettled) {
    world.copy().ini.SaveSetting("Main", "LogMin", "0");  // by hand
    EXPECT_EQ(ask({"set", "Main", "Hide", "False"}), VerbStatus::done) << "reads the section again";
    EXPECT_EQ(world.setting("Main", "LogMin"), "0");
    EXPECT_EQ(ask({"get", "Main", "LogMin"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "15\n") << "less than a minute is no interval";
}

TEST_F(VerbsTest, SetChangesTheFileAndTheRunningCopy) {
    EXPECT_EQ(ask({"set", "main", "logmin", "7"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(world.setting("Main", "LogMin"), "7");
    EXPECT_EQ(world.state().settings.LogMin, 7);
    EXPECT_NE(world.files.contents("Nimbry.ini").find("LogMin=7\r\n"), std::string::npos)
        << "in the key's own spelling";

    EXPECT_EQ(ask({"set", "Main", "Latitude", "-33.8"}), VerbStatus::done) << "a sign makes no switch of a value";
    EXPECT_EQ(world.state().settings.Latitude, "-33.8");
    EXPECT_EQ(ask({"set", "Main", "WebComment", "--json"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Main", "WebComment"), "--json");
    EXPECT_EQ(ask({"set", "Marquee", "DisDew", "True"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Marquee", "DisDew"), "True");
}

TEST_F(VerbsTest, ASwitchThatIsSetIsCheckedInTheMenu) {
    EXPECT_EQ(ask({"set", "Main", "mlogftp", "True"}), VerbStatus::done);
    EXPECT_TRUE(world.state().menu.mnulogFTP.checked);
}

TEST_F(VerbsTest, AnUnknownKeyIsRefusedAndNothingIsWritten) {
    const std::string before = world.files.contents("Nimbry.ini");
    EXPECT_EQ(ask({"set", "Main", "Colour\xFC", "blue"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Nimbry knows no key Colourü in section Main");
    EXPECT_EQ(ask({"set", "Users", "LogMin", "1"}), VerbStatus::failed);
    EXPECT_EQ(ask({"get", "Main", "iplist(n)"}), VerbStatus::failed) << "the name of a list, of none of its entries";
    EXPECT_EQ(world.files.contents("Nimbry.ini"), before);
}

TEST_F(VerbsTest, AValueThatAKeyDoesNotTakeIsRefusedAndNothingIsWritten) {
    const std::string before = world.files.contents("Nimbry.ini");
    EXPECT_EQ(ask({"set", "main", "logmin", "500\xB0"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "LogMin takes a whole number from 1 to 99, not \"500°\"");
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(world.files.contents("Nimbry.ini"), before);
    EXPECT_EQ(world.state().settings.LogMin, 15);
}

TEST_F(VerbsTest, AFileThatCannotBeWrittenIsToldAndTheValueIsInForce) {
    world.files.refuse_changes(FileResult::permission);
    EXPECT_EQ(ask({"set", "Main", "LogMin", "7"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "The value is in force, but Nimbry.ini could not be written");
    EXPECT_EQ(world.state().settings.LogMin, 7);
}

TEST_F(VerbsTest, WrongNumbersOfArgumentsAreBadUsage) {
    for (const Words& words :
         {Words{"get", "Main"}, Words{"get", "Main", "LogMin", "1"}, Words{"set", "Main", "LogMin"},
          Words{"set", "Main", "LogMin", "1", "2"}, Words{"stop", "now"}, Words{"prune-log", "5"},
          Words{"notices", "5"}, Words{"panel", "5"}}) {
        EXPECT_EQ(ask(words), VerbStatus::bad_usage) << words.front();
    }
    EXPECT_FALSE(world.engine.gone());
}

class PruneLogVerbTest : public VerbsTest {
protected:
    /// A log of lines "1" to "count".
    void put_log(int count) {
        std::string log;
        for (int n = 1; n <= count; ++n) log += std::to_string(n) + "\r\n";
        world.files.put("nbyprog.log", log);
    }
};

TEST_F(PruneLogVerbTest, WithoutYesTheQuestionIsToldAndNothingIsDone) {
    put_log(12);
    EXPECT_EQ(ask({"prune-log"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Are you sure you want to clear all but the last 10 entries from the program log? (--yes)");
    EXPECT_EQ(world.lines("nbyprog.log").size(), 12U);
}

TEST_F(PruneLogVerbTest, WithYesTheLastTenLinesAreKept) {
    put_log(12);
    EXPECT_EQ(ask({"prune-log", "--yes"}), VerbStatus::done);
    EXPECT_EQ(world.lines("nbyprog.log"), (Words{"3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
}

TEST_F(PruneLogVerbTest, AShortOrMissingLogIsRefused) {
    put_log(10);
    EXPECT_EQ(ask({"prune-log", "--yes"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "There are already 10 or less entries in the program log");
    world.files.take_away("nbyprog.log");
    EXPECT_EQ(ask({"prune-log"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "No program log file exists");
}

TEST_F(PruneLogVerbTest, ADiskThatRefusesIsToldAndDoesNotEndTheCopy) {
    put_log(12);
    world.files.refuse_changes(FileResult::disk_full);
    EXPECT_EQ(ask({"prune-log", "--yes"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "The program log could not be pruned: Disk full");
    EXPECT_FALSE(world.state().run.HaveError);
    EXPECT_EQ(world.lines("nbyprog.log").size(), 12U);
}

TEST_F(VerbsTest, StopIsTheMenusExit) {
    EXPECT_EQ(ask({"stop"}), VerbStatus::done);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 0);
    EXPECT_TRUE(world.log().back().ends_with(" Program stopped, normal exit"));
    EXPECT_EQ(world.sounds.played, Words{"click.WAV"});
}

TEST_F(VerbsTest, ACopyThatIsClosingAnswersNothingElse) {
    world.act([&] { world.engine.window_close(); });
    world.run_for(1s);
    EXPECT_EQ(ask({"status"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "The copy is closing");
    EXPECT_EQ(asker.out, "");
}

}  // namespace
}  // namespace nimbry::test
