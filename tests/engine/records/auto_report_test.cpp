#include "engine/records/auto_report.h"

#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using test::at;

const std::string fields =
    ",Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,00:00,"
    "0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,1.5,5,2.5\r\n";

struct Reporting : test::BareCopy {
    explicit Reporting(CivilTime now) {
        clock.set_computer_time(now);
        state.readings.dtvar = now;
    }
    std::string first_line() {
        return files.contents("NBYSummary.txt").substr(0, files.contents("NBYSummary.txt").find('\r'));
    }
    std::string period() {
        const std::string text = files.contents("NBYSummary.txt");
        const std::size_t from = text.find("covering");
        return text.substr(from, text.find('\r', from) - from);
    }
};

TEST(AutoReport, TheLiveAlmanacGoesBeforeTheArchive) {
    Reporting world(at(11, 1, 9, 0));
    world.files.put("nbextreme.log", "Midnight\r\n1" + fields);
    world.files.put("alOct26.csv", "Midnight\r\n1" + fields + "2" + fields);
    AutoGenreport(world.copy);
    EXPECT_EQ(world.first_line(), "Nimbry monthly summary for the current month");
    EXPECT_EQ(world.files.contents("altemp.csv"), "Midnight\r\n1" + fields);
}

TEST(AutoReport, AnArchiveOfTwoDaysAgoStandsInForAMissingOne) {
    Reporting world(at(11, 1, 9, 0));
    world.files.put("alOct26.csv", "Midnight\r\n1" + fields + "2" + fields);
    AutoGenreport(world.copy);
    EXPECT_EQ(world.first_line(), "Nimbry monthly summary for October 2026");
    EXPECT_EQ(world.period(), "covering the period 01 October to 02 October.");
}

TEST(AutoReport, WithoutEitherNothingIsWritten) {
    Reporting world(at(11, 3, 9, 0));
    world.files.put("alOct26.csv", "Midnight\r\n1" + fields);
    AutoGenreport(world.copy);
    EXPECT_FALSE(world.files.exists("NBYSummary.txt"));
    EXPECT_FALSE(world.files.exists("altemp.csv"));
}

TEST(AutoReport, ThePageIsMadeOfTheTemplateAndWaitsForItsUpload) {
    Reporting world(at(10, 5, 9, 0));
    world.files.put("nbextreme.log", "Midnight\r\n1" + fields);
    world.files.put("nimbrysummarytemplate.html", "<p>~~SUBRAINTOT~~\r\n~~WEBOUTTEMP~~\r\n\r\nno end ~~SUBRAINDYS~~");
    world.files.put("TempSummary.html", "left over\r\n");
    world.files.put("nimbrysummary.html", "the old page\r\n");
    world.state.records.summary_uploaded = true;
    AutoGenreport(world.copy);
    EXPECT_EQ(world.files.contents("nimbrysummary.html"), "<p>1.5 mm\r\n~~WEBOUTTEMP~~\r\n\r\nno end 1");
    EXPECT_FALSE(world.files.exists("TempSummary.html"));
    EXPECT_FALSE(world.state.records.summary_uploaded);
}

TEST(AutoReport, WithoutATemplateThereIsNoPage) {
    Reporting world(at(10, 5, 9, 0));
    world.files.put("nbextreme.log", "Midnight\r\n1" + fields);
    AutoGenreport(world.copy);
    EXPECT_FALSE(world.files.exists("nimbrysummary.html"));
    EXPECT_TRUE(world.state.records.summary_uploaded);
}

TEST(AutoReport, ASilentHeadTakesTheChangeoverInForce) {
    Reporting world(at(10, 5, 9, 0));
    world.files.put("nbextreme.log", "Nimbry\r\n3" + fields);
    AutoGenreport(world.copy);
    EXPECT_EQ(world.period(), "covering the period 02 October to 03 October.");
    world.state.settings.tmidnight = true;
    AutoGenreport(world.copy);
    EXPECT_EQ(world.period(), "covering the period 03 October to 03 October.");
    world.state.settings.tmidnight = false;
    world.state.settings.AddOneHour = true;
    AutoGenreport(world.copy);
    EXPECT_NE(world.files.contents("NBYSummary.txt").find("ending at 10.00 am on"), std::string::npos);
}

struct YearCase {
    const char *name, *file, *year;
};

TEST(AutoReport, AnArchivesYearIsTheTwoDigitsOfItsName) {
    const YearCase cases[] = {
        {"digits", "alOct24.csv", "2024"},
        {"none: the computer's", "almanac.csv", "2026"},
        {"one digit: the computer's", "alOct4.csv", "2026"},
        {"no extension: the computer's", "a", "2026"},
    };
    for (const YearCase& c : cases) {
        SCOPED_TRACE(c.name);
        Reporting world(at(10, 5, 9, 0));
        world.files.put(c.file, "Midnight\r\n1" + fields);
        alanalyse(world.copy, c.file);
        EXPECT_EQ(world.first_line(), std::string("Nimbry monthly summary for October ") + c.year);
    }
}

// The rows carry no year, so it decides whether a date is one.
TEST(AutoReport, ALiveAlmanacsDatesAreOfTheStationsYear) {
    std::string february = "29" + fields;
    february.replace(february.find("Oct"), 3, "Feb");
    Reporting leap(at(2, 29, 9, 0, 0, 2028));
    leap.files.put("nbextreme.log", "Midnight\r\n" + february);
    AutoGenreport(leap.copy);
    EXPECT_EQ(leap.period(), "covering the period 29 February to 29 February.");
    Reporting common(at(2, 28, 9, 0, 0, 2027));
    common.files.put("nbextreme.log", "Midnight\r\n" + february);
    AutoGenreport(common.copy);
    EXPECT_EQ(common.period(), "covering the period  ??  to  ?? .");
}

}  // namespace
}  // namespace nimbry
