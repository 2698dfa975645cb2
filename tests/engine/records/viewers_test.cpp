#include "engine/records/viewers.h"

#include <gtest/gtest.h>

#include "engine/core/run_time_error.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

const std::string row =
    "4,Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,00:00,"
    "0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,0,5,2.5\r\n";
const std::string almanac = "This is the Nimbry raw almanac file of daily extremes.\r\n\r\n" + row;

class Viewers : public testing::Test {
protected:
    Viewers() : days(at(10, 5, 14, 0)) {
        days.start();
        days.trains(at(10, 5, 14, 0), at(10, 5, 14, 0, 10));
        days.world.sounds.played.clear();
    }
    // The last balloon as "title: text".
    std::string told() const {
        if (days.world.notices.balloons.empty()) return "";
        const Balloon& balloon = days.world.notices.balloons.back().what;
        return balloon.title + ": " + balloon.text;
    }
    test::MemoryFiles& files() { return days.world.files; }
    Copy& copy() { return days.world.copy(); }
    WeatherDays days;
};

TEST_F(Viewers, TheAlmanacIsShownThroughACopyThatTakesTheOldOnesPlace) {
    files().put("nbextreme.log", almanac);
    files().put("altemp.csv", "an older copy that is longer than this almanac" + almanac);
    EXPECT_EQ(mnuDisplayAlmanac(copy()), "altemp.csv");
    EXPECT_EQ(files().contents("altemp.csv"), almanac);
    EXPECT_EQ(files().contents("nbextreme.log"), almanac);
    EXPECT_EQ(days.world.sounds.played, std::vector<std::string>{"click.WAV"});
    EXPECT_EQ(told(), "");
}

TEST_F(Viewers, TheWeatherLogIsShownThroughACopy) {
    files().put("nimbry.dat", "This is the Nimbry Log\r\n");
    EXPECT_EQ(mnuDisplayLog(copy()), "logtemp.csv");
    EXPECT_EQ(files().contents("logtemp.csv"), "This is the Nimbry Log\r\n");
}

TEST_F(Viewers, WithoutAFileABalloonSaysSo) {
    EXPECT_EQ(mnuDisplayAlmanac(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac File Error: No almanac file has been created yet for this month");
    EXPECT_EQ(mnuDisplayLog(copy()), std::nullopt);
    EXPECT_EQ(told(), "Log File Error: No log file has been created yet");
    EXPECT_EQ(mnuAutoReport(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac Error: No almanac file has been created yet for this month");
    EXPECT_EQ(days.world.sounds.played.size(), 3U);
}

// 1 November, station and computer: the archive of two days ago is October's.
TEST_F(Viewers, OnTheDayOfItsArchivingTheAlmanacIsSaidToBeArchived) {
    days.train(at(11, 1, 9, 0, 10));
    files().put("alOct26.csv", almanac);
    EXPECT_EQ(mnuDisplayAlmanac(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac File Error: No almanac exists yet as it has been archived");
    // The archive of another month says nothing.
    files().take_away("alOct26.csv");
    files().put("alSep26.csv", almanac);
    EXPECT_EQ(mnuDisplayAlmanac(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac File Error: No almanac file has been created yet for this month");
}

TEST_F(Viewers, TheDayAfterItsArchivingTheAlmanacHasNotBeenCreatedYet) {
    days.train(at(11, 1, 9, 0, 10));
    files().put("alOct26.csv", almanac);
    days.train(at(11, 2, 0, 0, 10));
    EXPECT_EQ(mnuDisplayAlmanac(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac File Error: No almanac file has been created yet for this month");
}

TEST_F(Viewers, ADiskThatRefusesTheCopyCostsTheLookOnly) {
    files().put("nbextreme.log", almanac);
    files().put("nimbry.dat", "log\r\n");
    files().refuse("altemp.csv", FileResult::disk_full);
    files().refuse("logtemp.csv", FileResult::permission);
    EXPECT_EQ(mnuDisplayAlmanac(copy()), std::nullopt);
    EXPECT_EQ(told(), "Almanac File Error: Disk full");
    EXPECT_EQ(mnuDisplayLog(copy()), std::nullopt);
    EXPECT_EQ(told(), "Log File Error: Permission denied");
    EXPECT_FALSE(days.world.state().run.HaveError);
}

TEST_F(Viewers, AChosenArchiveIsCopiedAnalysedAndItsSummaryShown) {
    files().put("alSep25.csv", almanac);
    EXPECT_EQ(mnuAlMonth(copy(), "alSep25.csv"), "NBYSummary.txt");
    EXPECT_EQ(files().contents("altemp.csv"), almanac);
    EXPECT_EQ(days.world.lines("NBYSummary.txt")[0], "Nimbry monthly summary for October 2025");
    EXPECT_TRUE(days.world.sounds.played.empty()) << "the click came before the choice";
}

TEST_F(Viewers, AnArchiveOfAnotherFolderIsTakenByItsPath) {
    files().add_folder("/old");
    files().put("/old/alOct24.csv", almanac);
    EXPECT_EQ(mnuAlMonth(copy(), "/old/alOct24.csv"), "NBYSummary.txt");
    EXPECT_EQ(days.world.lines("NBYSummary.txt")[0], "Nimbry monthly summary for October 2024");
}

TEST_F(Viewers, TheCopyItselfMayBeChosen) {
    // The chooser gives a whole path; on this disk that is a name of its own.
    files().add_folder("/nimbry");
    files().put("/nimbry/altemp.csv", almanac);
    files().put("altemp.csv", almanac);
    EXPECT_EQ(mnuAlMonth(copy(), files().path("altemp.csv")), "NBYSummary.txt");
    EXPECT_EQ(files().contents("altemp.csv"), almanac);
    // Its name has no year: the computer's.
    EXPECT_EQ(days.world.lines("NBYSummary.txt")[0], "Nimbry monthly summary for October 2026");
}

struct ArchiveCase {
    const char* name;
    std::string text;
    bool taken;
};

TEST_F(Viewers, OnlyAFileWhoseFirstLineNamesNimbryIsTaken) {
    const ArchiveCase cases[] = {
        {"a whole archive", almanac, true},
        {"blanks before the first line's words", "   This is the Nimbry raw almanac\r\n" + row, true},
        {"the name in the middle of a word", "xNimbryx\r\n" + row, true},
        {"line ends without a return", "Nimbry\n" + row, true},
        {"a head alone", "Nimbry", true},
        {"another file", "DATE,MONTH\r\nNimbry\r\n", false},
        {"the name in small letters", "nimbry almanac\r\n" + row, false},
        {"an empty file", "", false},
        {"an empty first line", "\r\nThis is the Nimbry raw almanac\r\n", false},
    };
    for (const ArchiveCase& c : cases) {
        SCOPED_TRACE(c.name);
        files().put("alOct26.csv", c.text);
        files().take_away("NBYSummary.txt");
        const int beeps = days.world.notices.beeps;
        EXPECT_EQ(mnuAlMonth(copy(), "alOct26.csv").has_value(), c.taken);
        EXPECT_EQ(files().exists("NBYSummary.txt"), c.taken);
        EXPECT_EQ(days.world.notices.beeps, beeps + (c.taken ? 0 : 1));
        if (!c.taken) {
            EXPECT_EQ(told(), "Almanac Error: The selected file is not a valid almanac file");
        }
    }
}

TEST_F(Viewers, AFileThatCannotBeOpenedIsNotValid) {
    files().put("alOct26.csv", almanac);
    files().refuse("alOct26.csv", FileResult::permission);
    EXPECT_EQ(mnuAlMonth(copy(), "alOct26.csv"), std::nullopt);
    EXPECT_EQ(told(), "Almanac Error: The selected file is not valid.");
    EXPECT_EQ(mnuAlMonth(copy(), "alNov26.csv"), std::nullopt);
    EXPECT_EQ(told(), "Almanac Error: The selected file is not valid.");
}

TEST_F(Viewers, TheCurrentMonthIsAnalysedWithoutAQuestion) {
    files().put("nbextreme.log", almanac);
    EXPECT_EQ(mnuAutoReport(copy()), "NBYSummary.txt");
    EXPECT_EQ(files().contents("altemp.csv"), almanac);
    EXPECT_EQ(days.world.lines("NBYSummary.txt")[0], "Nimbry monthly summary for the current month");
}

TEST_F(Viewers, ADamagedRowIsAnErrorOfTheAnalysis) {
    files().put("alOct26.csv", "Nimbry\r\n4,Oct,+15.2\r\n");
    try {
        (void)mnuAlMonth(copy(), "alOct26.csv");
        FAIL();
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.number, ErrorNumber::index);
        EXPECT_EQ(error.tag, "alanalyse");
    }
}

}  // namespace
}  // namespace nimbry
