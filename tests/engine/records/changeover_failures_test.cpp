#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::day_text;
using test::MemoryFiles;
using test::WeatherDays;

const std::string midnight_keys = "tmidnight=True\r\ntnineam=False\r\n";
const std::string local_keys = "[FTP]\r\nLocalSave=True\r\nLocalPath=/local\r\n";

// A copy on the eve of a changeover, with every file that one can touch.
class Eve {
public:
    Eve(CivilTime when, const std::string& keys) : days(when - 30s, keys), change(when) {
        MemoryFiles& files = days.world.files;
        files.add_folder("/local");
        files.put("nbextreme.log", old_rows);
        files.put("/local/nbextreme.log", "older rows\r\n");
        files.put("nbextreme.bak", "an older backup\r\n");
        files.put("nimbrTDay.bak", "an older backup\r\n");
        files.put("nimbrYDay.bak", "an older backup\r\n");
        files.put("nimbry.dat", "log\r\n");
        files.put("/local/nimbry.dat", "older log\r\n");
        files.put("nimbrysummarytemplate.html", "<p>~~SUBRAINDYS~~</p>\r\n");
        files.put("nimbrysummary.html", "an older page\r\n");
        days.start();
        days.trains(change - 30s, change - 20s);
        files.put("nimbrTDay.log", day_text("05 Oct 2026 08:50:00", 33));
        files.put("nimbrYDay.log", day_text("04 Oct 2026 08:58:50", 32));
        files.forget_calls();
    }
    void run() {
        days.train(change - 10s);
        days.world.run_for(8s);
    }
    // The disk calls of a changeover that goes well.
    static std::vector<MemoryFiles::Call> calls(CivilTime when, const std::string& keys) {
        Eve eve(when, keys);
        eve.run();
        return eve.days.world.files.calls();
    }
    // Every row that was ever written stands in the almanac or in its archive.
    void expect_no_row_lost(const char* archive) {
        const MemoryFiles& files = days.world.files;
        const std::string all = files.contents("nbextreme.log") + files.contents(archive);
        EXPECT_NE(all.find(old_rows), std::string::npos);
    }
    // Of the starts that follow, one may be refused for a torn file, and no more.
    void expect_a_start_comes_up() {
        auto before = &days;
        std::unique_ptr<WeatherDays> started;
        for (int tries = 0; tries < 2 && (tries == 0 || before->world.engine.gone()); ++tries) {
            auto next = std::make_unique<WeatherDays>(change + 5min);
            next->inherit(before->world);
            next->start();
            next->trains(change + 5min, change + 5min + 10s);
            next->world.run_for(5s);
            started = std::move(next);
            before = started.get();
        }
        EXPECT_FALSE(before->world.engine.gone());
    }

    static inline const std::string old_row =
        "4,Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,"
        "00:00,0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,0,5,2.5\r\n";
    static inline const std::string old_rows = "This file used 9.00am changeover times\r\n" + old_row;
    WeatherDays days;
    CivilTime change;
};

// The analysis is not one of the routines that go on after an error.
bool is_of_the_summary(const std::vector<MemoryFiles::Call>& calls, std::size_t n) {
    const std::set<std::string> files{"altemp.csv", "NBYSummary.txt", "TempSummary.html", "nimbrysummary.html",
                                      "nimbrysummarytemplate.html"};
    return files.contains(calls[n].name) || files.contains(calls[n].other);
}

TEST(ChangeoverFailures, WhicheverDiskCallFailsNothingRecordedIsLostAndTheNextDayIsClosed) {
    const CivilTime change = at(10, 5, 9, 0);
    const auto calls = Eve::calls(change, local_keys);
    ASSERT_GT(calls.size(), 20U);
    for (std::size_t n = 0; n < calls.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + calls[n].operation + " " + calls[n].name + " " + calls[n].other);
        Eve eve(change, local_keys);
        WeatherDays& days = eve.days;
        days.world.files.fail_call(n + 1, FileResult::permission);
        eve.run();
        eve.expect_no_row_lost("alOct26.csv");
        EXPECT_EQ(days.world.lines("nimbrTDay.log").size(), 33U);
        EXPECT_EQ(days.world.lines("nimbrYDay.log").size(), 32U);
        if (is_of_the_summary(calls, n)) {
            EXPECT_TRUE(days.world.engine.gone());
            EXPECT_EQ(days.logged("Program stopped, Unrecoverable error 70 encountered in alanalyse"), 1);
            EXPECT_EQ(days.rows().size(), 2U);
            continue;
        }
        EXPECT_FALSE(days.world.engine.gone());
        EXPECT_FALSE(days.world.state().run.DuplicateError);
        EXPECT_FALSE(days.world.state().comm.changebusy);
        EXPECT_EQ(days.world.state().records.day.maxtemp, -999);
        days.world.files.allow();
        const std::size_t rows = days.rows().size();
        EXPECT_LE(rows, 2U);
        days.trains(change + 24h - 30s, change + 24h - 10s);
        EXPECT_EQ(days.rows().size(), rows + 1);
        EXPECT_EQ(days.world.lines("nimbrYDay.log")[0], "06 Oct 2026 08:58:50");
    }
}

// At a month's end by midnight: the archive is whole or not there at all, here and in the local folder.
TEST(ChangeoverFailures, WhicheverDiskCallFailsAtAMonthsEndTheArchiveIsWholeOrNotThere) {
    const CivilTime change = at(11, 1, 0, 0);
    const std::string keys = midnight_keys + local_keys;
    const auto calls = Eve::calls(change, keys);
    for (std::size_t n = 0; n < calls.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + calls[n].operation + " " + calls[n].name + " " + calls[n].other);
        Eve eve(change, keys);
        WeatherDays& days = eve.days;
        days.world.files.fail_call(n + 1, FileResult::disk_full);
        eve.run();
        eve.expect_no_row_lost("alOct26.csv");
        eve.expect_a_start_comes_up();
        EXPECT_NE(days.world.files.exists("nbextreme.log"), days.world.files.exists("alOct26.csv"));
        if (days.world.engine.gone()) {
            EXPECT_TRUE(is_of_the_summary(calls, n));
        } else {
            EXPECT_FALSE(days.world.state().run.DuplicateError);
            EXPECT_FALSE(days.world.state().comm.changebusy);
        }
    }
}

TEST(ChangeoverFailures, WhicheverDiskCallFailsInARollTheLogIsWholeHereOrThere) {
    const auto world_at_months_end = [] {
        auto days = std::make_unique<WeatherDays>(
            at(10, 31, 23, 50), "fwrtlog=True\r\nLogMin=15\r\n[FTP]\r\nLocalSave=True\r\nLocalPath=/local\r\n");
        days->world.files.add_folder("/local");
        days->world.files.put("nimbry.dat", "october\r\n");
        days->world.files.put("/local/nimbry.dat", "october twin\r\n");
        days->start();
        days->train(at(10, 31, 23, 50));
        days->train(at(10, 31, 23, 50, 10));
        days->world.files.forget_calls();
        return days;
    };
    const auto sound = world_at_months_end();
    sound->world.run_for(16min);
    const auto calls = sound->world.files.calls();
    ASSERT_EQ(sound->world.lines("logOct26.csv").front(), "october");
    // From the entry's first call to the local rename; what stands around it tells of the station's silence.
    const auto called = [&](const std::string& name) {
        return std::find_if(calls.begin(), calls.end(), [&](const auto& call) { return call.name == name; });
    };
    const auto first = static_cast<std::size_t>(called("nimbry.dat") - calls.begin());
    constexpr std::size_t local_rename = 7;
    ASSERT_LT(first + local_rename, calls.size());
    ASSERT_EQ(calls[first + local_rename].other, "/local/logOct26.csv");
    for (std::size_t n = first; n <= first + local_rename; ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + calls[n].operation + " " + calls[n].name + " " + calls[n].other);
        const auto days = world_at_months_end();
        MemoryFiles& files = days->world.files;
        files.fail_call(n + 1, FileResult::disk_full);
        days->world.run_for(16min);
        EXPECT_FALSE(days->world.engine.gone());
        EXPECT_EQ(files.contents("nimbry.dat") + files.contents("logOct26.csv"),
                  calls[n].operation == "append" && calls[n].name == "nimbry.dat"
                      ? "october\r\n"
                      : sound->world.files.contents("logOct26.csv"));
        EXPECT_NE(files.exists("nimbry.dat"), files.exists("logOct26.csv"));
        files.allow();
        days->world.run_for(16min);
        EXPECT_TRUE(files.exists("logOct26.csv"));
    }
}

TEST(ChangeoverFailures, AMissingLocalFolderIsToldTwiceAndCostsNothingElse) {
    WeatherDays days(at(10, 5, 8, 59, 30), "[FTP]\r\nLocalSave=True\r\nLocalPath=/away\r\n");
    days.world.files.put("nimbry.dat", "log\r\n");
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    days.world.run_for(5s);
    const std::string text = "Local save error in changeover routine writing to file: nimbry.dat";
    int balloons = 0;
    for (const auto& shown : days.world.notices.balloons)
        if (shown.what.title == "Local Save Error" && shown.what.text == text) ++balloons;
    EXPECT_EQ(balloons, 2);
    const auto log = days.world.log();
    EXPECT_EQ(std::count(log.begin(), log.end(), "05 Oct 2026 08:59:50 " + text), 2);
    EXPECT_EQ(days.changeovers(), 1);
    EXPECT_EQ(days.rows().size(), 1U);
    EXPECT_TRUE(days.world.files.exists("NBYSummary.txt"));
    EXPECT_FALSE(days.world.engine.gone());
}

TEST(ChangeoverFailures, TheLocalFolderGetsTheLogAndTheAlmanacOverItsOwn) {
    WeatherDays days(at(10, 5, 8, 59, 30), local_keys);
    MemoryFiles& files = days.world.files;
    files.add_folder("/local");
    files.put("nimbry.dat", "log\r\n");
    files.put("/local/nimbry.dat", "a longer and older log\r\n");
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    EXPECT_EQ(files.contents("/local/nimbry.dat"), "log\r\n");
    EXPECT_EQ(files.contents("/local/nbextreme.log"), files.contents("nbextreme.log"));
    EXPECT_NE(files.contents("nbextreme.log"), "");
}

TEST(ChangeoverFailures, WithoutALogTheLocalOneStays) {
    WeatherDays days(at(10, 5, 8, 59, 30), local_keys);
    days.world.files.add_folder("/local");
    days.world.files.put("/local/nimbry.dat", "twin\r\n");
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    EXPECT_EQ(days.world.files.contents("/local/nimbry.dat"), "twin\r\n");
}

TEST(ChangeoverFailures, ALocalAlmanacIsArchivedWithItsOriginal) {
    WeatherDays days(at(10, 31, 23, 59, 30), midnight_keys + local_keys);
    MemoryFiles& files = days.world.files;
    files.add_folder("/local");
    days.start();
    days.trains(at(10, 31, 23, 59, 30), at(10, 31, 23, 59, 50));
    EXPECT_NE(files.contents("alOct26.csv"), "");
    EXPECT_EQ(files.contents("/local/alOct26.csv"), files.contents("alOct26.csv"));
    EXPECT_FALSE(files.exists("/local/nbextreme.log"));
}

TEST(ChangeoverFailures, ALocalAlmanacThatIsMissingIsTold) {
    WeatherDays days(at(10, 31, 23, 59, 30), midnight_keys + "[FTP]\r\nLocalSave=True\r\nLocalPath=/away\r\n");
    days.start();
    days.trains(at(10, 31, 23, 59, 30), at(10, 31, 23, 59, 50));
    days.world.run_for(5s);
    EXPECT_EQ(days.logged(" Local Save copy of almanac not archived and rolled over"), 1);
    EXPECT_EQ(days.logged(" Almanac successfully archived and rolled over"), 1);
}

// A power cut at any moment of the changeover: the row, its backup and yesterday's file that were told done stay.
TEST(ChangeoverFailures, WhatAChangeoverFinishedSurvivesAPowerCut) {
    Eve eve(at(10, 5, 9, 0), "");
    eve.run();
    MemoryFiles& files = eve.days.world.files;
    const std::string almanac = files.contents("nbextreme.log");
    const std::string yesterday = files.contents("nimbrYDay.log");
    files.power_cut();
    EXPECT_EQ(files.contents("nbextreme.log"), almanac);
    EXPECT_EQ(files.contents("nbextreme.bak"), Eve::old_rows);
    EXPECT_EQ(files.contents("nimbrYDay.log"), yesterday);
}

TEST(ChangeoverFailures, ATornRowIsCutOffBeforeTheNextAndAWholeOneGetsItsLineEnd) {
    const std::string torn = Eve::old_rows + "5,Oct,+12.3,14:0";
    std::string unended = Eve::old_rows;
    unended.resize(unended.size() - 2);
    for (const std::string& found : {torn, unended, Eve::old_rows}) {
        Eve eve(at(10, 6, 9, 0), "");
        eve.days.world.files.put("nbextreme.log", found);
        eve.run();
        ASSERT_EQ(eve.days.rows().size(), 2U);
        EXPECT_TRUE(eve.days.world.files.contents("nbextreme.log").starts_with(Eve::old_rows + "6,Oct,"));
        EXPECT_FALSE(eve.days.world.engine.gone());
    }
}

TEST(ChangeoverFailures, AnArchiveSurvivesAPowerCut) {
    Eve eve(at(11, 1, 0, 0), midnight_keys);
    eve.run();
    MemoryFiles& files = eve.days.world.files;
    const std::string archive = files.contents("alOct26.csv");
    files.power_cut();
    EXPECT_EQ(files.contents("alOct26.csv"), archive);
    EXPECT_FALSE(files.exists("nbextreme.log"));
}

}  // namespace
}  // namespace nimbry
