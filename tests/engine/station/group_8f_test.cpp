#include <vector>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

using Group8F = Decoding;

TEST_F(Group8F, ShowsTheStationsTimeAndDate) {
    station.clock = {.second = 7, .minute = 5, .hour = 9, .day = 5, .month = 10};
    world.train(station);
    EXPECT_EQ(panel.TxtTime.text, "09:05:07");
    EXPECT_EQ(panel.TxtDate.text, "Oct  5");
    EXPECT_EQ(readings.dtvar, civil_time({2026, 10, 5, 9, 5, 7}));
    EXPECT_TRUE(readings.HaveValidDate);
}

TEST_F(Group8F, GivesTheLogItsDateMonthAndMinute) {
    EXPECT_EQ(state.log_fields.logdate, "5");
    EXPECT_EQ(state.log_fields.logmonth, "Oct");
    EXPECT_EQ(state.log_fields.logtime, "14:00");
}

TEST_F(Group8F, TheComputersYearCompletesTheDate) {
    world.clock.set_computer_time(*civil_time({2031, 10, 5, 14, 0, 0}));
    train();
    EXPECT_EQ(parts_of(*readings.dtvar).year, 2031);
}

TEST_F(Group8F, YesterdayIsTheDayOneMinuteBefore) {
    struct Case {
        const char* what;
        StationReadings::Moment clock;
        int day;
    };
    for (const Case& c : {
             Case{"the first minute of a month", {59, 0, 0, 1, 10}, 30},
             Case{"the second minute of it", {0, 1, 0, 1, 10}, 1},
             Case{"the first minute of March in a common year", {0, 0, 0, 1, 3}, 28},
             Case{"the first minute of the year", {10, 0, 0, 1, 1}, 31},
             Case{"noon", {0, 0, 12, 17, 6}, 17},
         }) {
        SCOPED_TRACE(c.what);
        station.clock = c.clock;
        world.train(station);
        EXPECT_EQ(readings.YesterDay, c.day);
    }
}

TEST_F(Group8F, TheFirstTrainSetsTheClockAndNothingElse) {
    BareCopy fresh;
    fresh.train(station);
    EXPECT_EQ(fresh.state.panel.TxtTime.text, "14:00:10");
    EXPECT_TRUE(fresh.state.readings.dtvar.has_value());
    EXPECT_EQ(fresh.state.panel.Text2[2].text, "");
    EXPECT_EQ(fresh.state.panel.Text2[9].text, "");
    EXPECT_EQ(fresh.state.panel.TxtOsHumHi.text, "");
}

struct DateCase {
    const char* what;
    int year;
    StationReadings::Moment clock;
    bool possible;
};

TEST_F(Group8F, AnImpossibleDateStopsTheTrain) {
    for (const DateCase& c : {
             DateCase{"31 February", 2026, {0, 0, 12, 31, 2}, false},
             DateCase{"29 February of a common year", 2026, {0, 0, 12, 29, 2}, false},
             DateCase{"29 February of a leap year", 2028, {0, 0, 12, 29, 2}, true},
             DateCase{"29 February of 2100", 2100, {0, 0, 12, 29, 2}, false},
             DateCase{"28 February", 2026, {0, 0, 12, 28, 2}, true},
             DateCase{"31 April", 2026, {0, 0, 12, 31, 4}, false},
             DateCase{"31 December", 2026, {59, 59, 23, 31, 12}, true},
             DateCase{"day 0", 2026, {0, 0, 12, 0, 5}, false},
             DateCase{"day 32", 2026, {0, 0, 12, 32, 5}, false},
             DateCase{"month 0", 2026, {0, 0, 12, 5, 0}, false},
             DateCase{"month 13", 2026, {0, 0, 12, 5, 13}, false},
             DateCase{"month 15", 2026, {0, 0, 12, 5, 15}, false},
             DateCase{"hour 24", 2026, {0, 0, 24, 5, 5}, false},
             DateCase{"minute 60", 2026, {0, 60, 12, 5, 5}, false},
             DateCase{"second 60", 2026, {60, 0, 12, 5, 5}, false},
             DateCase{"the first second of a day", 2026, {0, 0, 0, 1, 1}, true},
         }) {
        SCOPED_TRACE(c.what);
        world.clock.set_computer_time(*civil_time({c.year, 6, 1, 12, 0, 0}));
        train();
        const auto before = readings.dtvar;
        station.temperature.outdoor = station.temperature.outdoor == 12.3 ? 8.1 : 12.3;
        const std::string temperature = panel.Text2[0].text;
        state.comm.dworkingb.set();
        station.clock = c.clock;
        world.train(station);
        EXPECT_EQ(readings.HaveValidDate, c.possible);
        EXPECT_EQ(readings.dtvar != before, c.possible);
        EXPECT_EQ(panel.Text2[0].text != temperature, c.possible) << panel.Text2[0].text;
        EXPECT_FALSE(state.comm.dworkingb);
    }
}

TEST_F(Group8F, ARejectedTrainHasChangedTheTimeAndDateBoxesAllTheSame) {
    station.clock = {.second = 1, .minute = 2, .hour = 3, .day = 31, .month = 2};
    world.train(station);
    EXPECT_EQ(panel.TxtTime.text, "03:02:01");
    EXPECT_EQ(panel.TxtDate.text, "Feb  31");
}

TEST_F(Group8F, ADigitThatIsNotDecimalIsNoDate) {
    for (const int place : {3, 4, 5, 6, 7, 8, 9, 10}) {
        for (int value = 10; value <= 15; ++value) {
            SCOPED_TRACE(testing::Message() << "digit " << place << " is " << value);
            train_with(0x8F, place, value);
            EXPECT_FALSE(readings.HaveValidDate);
        }
    }
}

TEST_F(Group8F, TellsTheUtcOfTheComputer) {
    world.clock.set_computer_time(*civil_time({2026, 10, 5, 9, 30, 7}));
    world.clock.set_zone(std::chrono::hours{11});
    train();
    EXPECT_EQ(readings.utc.stamp, "2026-10-04 22:30:07");
    EXPECT_EQ(readings.utc.time, "22:30:07");
    EXPECT_EQ(readings.utc.date, "04 October 2026");
    EXPECT_EQ(readings.utc.time_utc, "22:30:07 UTC");
    EXPECT_EQ(readings.utc.month_day, "October 04");
}

TEST_F(Group8F, UtcFollowsAZoneOfHalfAnHourWestOfIt) {
    world.clock.set_computer_time(*civil_time({2026, 12, 31, 22, 0, 0}));
    world.clock.set_zone(-std::chrono::minutes{210});
    train();
    EXPECT_EQ(readings.utc.stamp, "2027-01-01 01:30:00");
}

struct HumidityCase {
    const char* what;
    int outdoor;
    bool over_range;
    const char *text, *balloon, *log;
};

TEST_F(Group8F, ShowsTheOutdoorHumidity) {
    for (const HumidityCase& c : {
             HumidityCase{"an ordinary reading", 54, false, "54 %", "Humidity 54 %", "54"},
             HumidityCase{"the driest that has a dew point, digits as sent", 1, false, "01 %", "Humidity 01 %", "01"},
             HumidityCase{"97 is 97", 97, false, "97 %", "Humidity 97 %", "97"},
             HumidityCase{"97 over range is 100, with a blank in front", 97, true, " 100 %", "Humidity 100 %", "100"},
             HumidityCase{"the over-range bit means nothing at 96", 96, true, "96 %", "Humidity 96 %", "96"},
             HumidityCase{"nor at 98", 98, true, "98 %", "Humidity 98 %", "98"},
             HumidityCase{"the highest digits", 99, false, "99 %", "Humidity 99 %", "99"},
         }) {
        SCOPED_TRACE(c.what);
        station.humidity.outdoor = c.outdoor;
        station.humidity.outdoor_over_range = c.over_range;
        train();
        EXPECT_EQ(panel.Text2[2].text, c.text);
        EXPECT_EQ(panel.Text2[2].balloon, c.balloon);
        EXPECT_EQ(state.log_fields.logoshum, c.log);
    }
}

TEST_F(Group8F, OverRangeChangesWhatIsShownAndNotTheReading) {
    station.humidity.outdoor = 97;
    station.humidity.outdoor_over_range = true;
    train();
    EXPECT_EQ(readings.rdathumidity, "97");
}

TEST_F(Group8F, ShowsTheIndoorHumidity) {
    station.humidity.indoor = 45;
    train();
    EXPECT_EQ(panel.Text2[9].text, "45 %");
    EXPECT_EQ(panel.Text2[9].balloon, "Indoor Humidity 45 %");
    EXPECT_EQ(state.log_fields.loginhum, "45");
    station.humidity.indoor = 8;
    train();
    EXPECT_EQ(panel.Text2[9].text, "08 %");
}

struct RecordCase {
    const char* what;
    int high, low;
    bool high_over_range;
    const char *high_text, *low_text;
};

TEST_F(Group8F, ShowsTheStationsHumidityRecords) {
    for (const RecordCase& c : {
             RecordCase{"ordinary records", 93, 23, false, "93 % at 06:15 on 03  Jul", "23 % at 14:32 on 21  Jan"},
             RecordCase{"97 is 97", 97, 23, false, "97 % at 06:15 on 03  Jul", "23 % at 14:32 on 21  Jan"},
             RecordCase{"97 over range is 100", 97, 23, true, "100 % at 06:15 on 03  Jul", "23 % at 14:32 on 21  Jan"},
             RecordCase{"96 over range is 96", 96, 9, true, "96 % at 06:15 on 03  Jul", "9 % at 14:32 on 21  Jan"},
             RecordCase{"a high of 11", 11, 10, false, "11 % at 06:15 on 03  Jul", "10 % at 14:32 on 21  Jan"},
             RecordCase{"a high of 10 marks the low", 10, 9, false, "10 % at 06:15 on 03  Jul",
                        "< 9 % at 14:32 on 21  Jan"},
             RecordCase{"a low of 97 is never corrected", 97, 97, true, "100 % at 06:15 on 03  Jul",
                        "97 % at 14:32 on 21  Jan"},
         }) {
        SCOPED_TRACE(c.what);
        station.humidity.high = c.high;
        station.humidity.low = c.low;
        station.humidity.high_over_range = c.high_over_range;
        train();
        EXPECT_EQ(panel.TxtOsHumHi.text, c.high_text);
        EXPECT_EQ(panel.TxtOsHumLo.text, c.low_text);
    }
}

TEST_F(Group8F, AMonthDigitThatIsNoMonthLeavesTheRecordWithoutOne) {
    for (const int value : {0, 13, 14, 15}) {
        SCOPED_TRACE(value);
        train_with(0x8F, 52, value);
        EXPECT_EQ(panel.TxtOsHumHi.text, "97 % at 06:15 on 03  ");
    }
    train_with(0x8F, 52, 12);
    EXPECT_EQ(panel.TxtOsHumHi.text, "97 % at 06:15 on 03  Dec");
}

TEST_F(Group8F, AFaultySensorLeavesTheReadingAndStillShowsTheRecords) {
    train();
    station.humidity.outdoor_fault = true;
    station.humidity.outdoor = 30;
    station.humidity.high = 88;
    train();
    EXPECT_EQ(panel.Text2[2].text, "54 %");
    EXPECT_EQ(panel.TxtOsHumHi.text, "88 % at 06:15 on 03  Jul");
    train();
    EXPECT_EQ(panel.Text2[2].text, "Error");
    EXPECT_EQ(state.log_fields.logoshum, "54");
}

TEST_F(Group8F, ErrorsBearItsTag) {
    station.humidity.outdoor_fault = true;
    world.files.refuse(std::string(ProgramLog::file), FileResult::disk_full);
    train();
    try {
        train();
        ADD_FAILURE() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "8F group");
        EXPECT_EQ(error.number, ErrorNumber::disk_full);
    }
}

}  // namespace
}  // namespace nimbry::test
