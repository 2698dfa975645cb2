#include "engine/records/almanac.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/records/almanac_roll.h"
#include "tests/engine/records/weather_days.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;

// A copy whose day is complete, at a station's time, without an engine around it.
struct AlmanacCopy : test::BareCopy {
    explicit AlmanacCopy(CivilTime now) {
        clock.set_computer_time(now);
        state.readings.dtvar = now;
        state.readings.YesterDay = parts_of(now - 1min).day;
        state.run.fullystarted = true;
        state.log_fields.logdate = "5";
        state.log_fields.logmonth = month_name(parts_of(now).month);
        DayExtremes& d = state.records.day;
        d.maxtemp = d.mintemp = 12;
        d.maxhum = d.minhum = 50;
        d.maxrain = 0;
        d.maxbar = d.minbar = 1000;
        d.maxwind = 3;
        d.maxwindir = "90\xB0";
    }
    void row() {
        pauses.start([this] { almanac(copy); });
        pauses.pause(1s);
    }
    std::string field(std::size_t n) {
        const std::string text = files.contents("nbextreme.log");
        const std::size_t row = text.rfind('\n', text.size() - 2) + 1;
        std::size_t from = row;
        for (std::size_t k = 0; k < n; ++k) from = text.find(',', from) + 1;
        return text.substr(from, text.find_first_of(",\r", from) - from);
    }
};
constexpr std::size_t gust_field = 28, rain_field = 31, dry_days_field = 32, last_rain_field = 33;

struct RainCase {
    const char* name;
    float rain;
    const char *text, *dry_days, *last_rain, *box;
};

TEST(Almanac, CountsDryDaysByTheRainOfTheRow) {
    const RainCase cases[] = {
        {"dry", 0, "0", "4", "2.5", ""},
        {"rounds to nothing", 0.004F, "0", "4", "2.5", ""},
        {"rounds to something", 0.006F, "0.01", "0", "0.01", " 0.01 mm"},
        {"rain", 7, "7", "0", "7", " 7 mm"},
        // After a reset of the station's counter.
        {"negative", -3, "-3", "0", "-3", " -3 mm"},
    };
    for (const RainCase& c : cases) {
        SCOPED_TRACE(c.name);
        AlmanacCopy world(at(10, 5, 8, 59, 50));
        world.state.records.DaySinceRain = 3;
        world.state.records.LastRain = 2.5F;
        world.state.rain.raintoday = c.rain;
        world.row();
        EXPECT_EQ(world.field(rain_field), c.text);
        EXPECT_EQ(world.field(dry_days_field), c.dry_days);
        EXPECT_EQ(world.field(last_rain_field), c.last_rain);
        EXPECT_EQ(world.state.additional.txtAmtLastRain.text, c.box);
        EXPECT_TRUE(world.files.exists("nimbrTDay.log"));
    }
}

TEST(Almanac, AGustOfATwentiethAndMoreIsPrinted) {
    for (const auto& [ms, text] : {std::pair{0.2F, "0.2"}, {0.1F, "0"}, {-999.0F, "0"}, {17.0F, "17"}}) {
        AlmanacCopy world(at(10, 5, 8, 59, 50));
        world.state.units.wcorr = 1;
        world.state.records.day.maxwind = ms;
        world.row();
        EXPECT_EQ(world.field(gust_field), text);
    }
}

TEST(Almanac, ZeroHasAPlusAndHumidityNoSign) {
    AlmanacCopy world(at(10, 5, 8, 59, 50));
    world.state.records.day.maxtemp = 0;
    world.row();
    EXPECT_EQ(world.field(2), "+0");
    EXPECT_EQ(world.field(6), "50");
}

TEST(Almanac, TheOverridesOfAMissedChangeAreUsedOnce) {
    AlmanacCopy world(at(11, 1, 0, 30));
    world.state.settings.alRoll = "1";  // far from the month's end of the test below
    world.state.records.row_date = "31";
    world.state.records.row_month = "Oct";
    world.state.readings.dtvar = at(11, 5, 0, 30);
    world.row();
    EXPECT_EQ(world.field(0) + world.field(1), "31Oct");
    world.row();
    EXPECT_EQ(world.field(0) + world.field(1), "1Nov");
}

TEST(Almanac, NothingHappensWhileAnErrorStandsOrBeforeTheFirstCycle) {
    AlmanacCopy early(at(10, 5, 8, 59, 50));
    early.state.run.fullystarted = false;
    early.row();
    EXPECT_TRUE(early.files.names().empty());
    AlmanacCopy failed(at(10, 5, 8, 59, 50));
    failed.state.run.DuplicateError = true;
    failed.row();
    EXPECT_TRUE(failed.files.names().empty());
}

std::string rows(int count) {
    std::string text = "head\r\n";
    for (int n = 0; n < count; ++n) text += "1,Oct" + std::string(32, ',') + "\r\n";
    return text;
}

struct RollCase {
    const char* name;
    CivilTime now;
    const char* alRoll;
    int rows_before;
    bool archived, late;
};

TEST(Almanac, IsArchivedOnTheFirstOrWhenItsRowsOutnumberTheDay) {
    const RollCase cases[] = {
        {"the last day's midnight row", at(10, 31, 23, 59, 50), "5", 30, true, false},
        {"the last day's first second for it", at(10, 31, 23, 55, 0), "5", 30, true, false},
        {"a second before", at(10, 31, 23, 54, 59), "5", 30, false, false},
        {"the first at nine, even with one row", at(11, 1, 8, 59, 50), "5", 0, true, false},
        {"the last day at nine, rolled over the day after", at(10, 31, 8, 59, 50), "5", 30, false, false},
        {"the last day at nine, rolled over on the last", at(10, 31, 8, 59, 50), "905", 30, true, false},
        {"likewise at midnight", at(10, 31, 23, 59, 50), "905", 30, true, false},
        {"at midnight, made up for", at(11, 1, 0, 9, 0), "905", 30, true, false},
        {"at nine, made up for", at(10, 31, 9, 9, 0), "905", 30, true, false},
        {"at ten", at(10, 31, 9, 59, 50), "905", 30, true, false},
        {"at ten, made up for", at(10, 31, 10, 9, 0), "905", 30, true, false},
        {"rolled over on the last, a day before at midnight", at(10, 30, 23, 59, 50), "905", 29, false, false},
        {"a day before at midnight, made up for", at(10, 31, 0, 9, 0), "905", 30, false, false},
        {"a day before at ten, made up for", at(10, 30, 10, 9, 0), "905", 29, false, false},
        {"the day after at nine", at(11, 1, 8, 59, 50), "905", 0, false, false},
        {"the day after at ten", at(11, 1, 9, 59, 50), "905", 0, false, false},
        {"the day after at midnight", at(11, 1, 23, 59, 50), "905", 0, false, false},
        {"as many rows as days", at(10, 20, 8, 59, 50), "5", 19, false, false},
        {"one more", at(10, 20, 8, 59, 50), "5", 20, true, true},
        {"three rows on the 20th", at(10, 20, 8, 59, 50), "5", 2, false, false},
    };
    for (const RollCase& c : cases) {
        SCOPED_TRACE(c.name);
        AlmanacCopy world(c.now);
        world.state.settings.alRoll = c.alRoll;
        world.files.put("nbextreme.log", rows(c.rows_before));
        world.row();
        EXPECT_NE(world.files.exists("nbextreme.log"), c.archived);
        EXPECT_EQ(world.state.records.alarchiving, c.archived);
        EXPECT_EQ(world.notices.balloons.empty(), !c.late);
    }
}

TEST(Almanac, ALateArchiveIsToldInWords) {
    AlmanacCopy world(at(11, 2, 8, 59, 50));
    world.files.put("nbextreme.log", rows(30));
    world.row();
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Almanac Archiving Error");
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Your almanac has been archived but it appears to contain errors.\r\n"
              "You should check both the archived almanac\r\nand the raw almanac (nbextreme.log) if it exists");
    EXPECT_EQ(world.state.records.alarchmessage,
              "Your almanac has been archived but it appears to contain errors.\r\n"
              "Check the archived almanac and the raw almanac (nbextreme.log) if it exists");
    EXPECT_TRUE(world.files.exists("alOct26.csv"));
    // The next row in time takes the message back.
    world.row();
    EXPECT_EQ(world.state.records.alarchmessage, "");
}

// Kept on purpose: the month is the station's of 25 days ago, the year the computer's of yesterday.
TEST(Almanac, AnArchivesNameTakesItsMonthAndYearFromTwoClocks) {
    AlmanacCopy world(at(12, 31, 23, 59, 50, 2026));
    world.clock.set_computer_time(at(1, 2, 0, 0, 0, 2027));
    world.row();
    EXPECT_TRUE(world.files.exists("alDec27.csv"));
    AlmanacCopy late(at(10, 20, 8, 59, 50));
    late.files.put("nbextreme.log", rows(20));
    late.row();
    EXPECT_TRUE(late.files.exists("alSep26.csv"));
    AlmanacCopy first(at(1, 1, 8, 59, 50, 2027));
    first.row();
    EXPECT_TRUE(first.files.exists("alDec26.csv"));
}

TEST(Almanac, WithoutAFileTheArchiveStepSaysSo) {
    AlmanacCopy world(at(11, 1, 8, 59, 50));
    world.state.records.alarchiving = true;
    alRoll(world.copy);
    EXPECT_EQ(world.log_lines(),
              std::vector<std::string>{
                  "01 Nov 2026 08:59:50 Almanac not archived and rolled over as the raw archive file doesn't exist"});
}

TEST(Almanac, ItsBackupIsTheStateBeforeTheRow) {
    AlmanacCopy world(at(10, 20, 8, 59, 50));
    world.files.put("nbextreme.log", rows(3));
    world.files.put("nbextreme.bak", "older\r\n");
    world.row();
    EXPECT_EQ(world.files.contents("nbextreme.bak"), rows(3));
    EXPECT_EQ(count_almanac_rows(world.files.contents("nbextreme.log")), 4);
}

TEST(Almanac, ARowAndItsBackupAreSyncedInTurn) {
    AlmanacCopy world(at(10, 20, 8, 59, 50));
    world.files.put("nbextreme.log", rows(3));
    world.row();
    std::vector<std::string> calls;
    for (const auto& call : world.files.calls())
        if (call.operation == "sync" || call.operation == "append") calls.push_back(call.operation + " " + call.name);
    EXPECT_EQ(calls, (std::vector<std::string>{"sync nbextreme.bak", "append nbextreme.log", "sync nbextreme.log"}));
}

}  // namespace
}  // namespace nimbry
