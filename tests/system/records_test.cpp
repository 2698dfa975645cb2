#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>

#include "engine/derived/dates.h"
#include "engine/records/day_files.h"
#include "engine/station/train_writer.h"
#include "tests/system/running_copy.h"
#include "tests/system/set_clock.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

std::vector<std::string> lines_of(const std::string& text, std::string_view line_end = "\r\n") {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(line_end, at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + line_end.size();
    }
    return lines;
}

std::vector<std::string> rows_of(const std::string& almanac) {
    std::vector<std::string> rows;
    for (const std::string& line : lines_of(almanac))
        if (!line.empty() && line.front() >= '0' && line.front() <= '9') rows.push_back(line);
    return rows;
}

class RecordsTest : public testing::Test {
protected:
    // Sends a train of the station's clock and waits until the copy has counted it.
    [[nodiscard]] bool takes_train(const RunningCopy& copy, const StationReadings::Moment& clock) const {
        const int before = copy.frames("trains");
        send_train(clock);
        return eventually([&] { return copy.frames("trains") > before; });
    }
    void send_train(const StationReadings::Moment& clock) const {
        StationReadings readings;
        readings.clock = clock;
        station.send(write_train(readings));
    }

    // True once the copy has told, at a moment of its computer's clock that begins so, that the station's clock is
    // another one: the only thing that it says by that clock while it knows the station's.
    [[nodiscard]] bool clock_error_at(const std::string& moment) const {
        Process notices(NIMBRYCTL, {"--dir", folder.path(), "notices"});
        if (notices.ending() != exited(0)) return false;
        const auto lines = lines_of(notices.standard_output(), "\n");
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.starts_with(moment) && line.find("\tClock Error\t") != std::string::npos;
        });
    }

    platform::test::TemporaryFolder folder;
    StationLine station;
};

constexpr StationReadings::Moment october(int hour, int minute, int second, int day = 5) {
    return {second, minute, hour, day, 10};
}

// Today's file as a copy left it at 08:54:50 of 5 October of this year.
std::string saved_day(int year) {
    TodayRecord today;
    DayExtremes& d = today.extremes;
    d.maxtemp = d.mintemp = 10;
    d.maxhum = d.minhum = 50;
    d.maxbar = d.minbar = 1000;
    d.maxrain = 0;
    d.maxwind = 3;
    d.maxwindir = "90\xB0";
    return today_text(*civil_time({year, 10, 5, 8, 55, 0}), today);
}

/// The year of the zone in which the copies run too.
int this_year() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local.tm_year + 1900;
}

// The last train before the hour changes the day over some 30 ms after it was sent. Killed around that moment, the copy
// leaves whole files, and the next one closes the day if this one did not.
TEST_F(RecordsTest, AKillAroundAChangeoverLeavesWholeFilesAndAClosedDay) {
    // Later and later where the machine is so slow that no death has come behind the first write.
    int behind_the_first_write = 0;
    constexpr int usual_end_ms = 47, latest_ms = 1000;
    for (int delay_ms = 29; delay_ms <= usual_end_ms || (behind_the_first_write == 0 && delay_ms <= latest_ms);
         delay_ms += delay_ms < usual_end_ms ? 2 : 50) {
        SCOPED_TRACE(delay_ms);
        const platform::test::TemporaryFolder room;
        room.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
        room.put("nimbrTDay.log", saved_day(this_year()));
        {
            RunningCopy copy(room, station.device());
            ASSERT_TRUE(copy.listens());
            ASSERT_TRUE(takes_train(copy, october(8, 59, 30)));
            ASSERT_TRUE(takes_train(copy, october(8, 59, 40)));
            send_train(october(8, 59, 55));
            usleep(static_cast<useconds_t>(delay_ms) * 1000);
            copy.signal(SIGKILL);
            copy.ending();
            if (room.holds("nimbrYDay.log")) ++behind_the_first_write;
        }
        RunningCopy copy(room, station.device());
        ASSERT_TRUE(copy.listens());
        ASSERT_TRUE(takes_train(copy, october(9, 10, 0)));
        ASSERT_TRUE(takes_train(copy, october(9, 10, 10)));
        ASSERT_TRUE(takes_train(copy, october(9, 10, 20)));
        EXPECT_EQ(lines_of(room.contents("nimbrTDay.log")).size(), 33U);
        EXPECT_EQ(lines_of(room.contents("nimbrYDay.log")).size(), 32U);
        const auto rows = rows_of(room.contents("nbextreme.log"));
        for (const std::string& row : rows) EXPECT_EQ(std::count(row.begin(), row.end(), ','), 33) << row;
        // Only between the save of the finished day and its row is there a moment that loses the row.
        const std::string stamp = lines_of(room.contents("nimbrTDay.log")).front();
        EXPECT_TRUE(rows.size() == 1 || (rows.empty() && stamp.ends_with("09:00:05"))) << rows.size() << " " << stamp;
        EXPECT_TRUE(copy.runs());
    }
    EXPECT_GT(behind_the_first_write, 0);
}

// Computer and station pass midnight together at the end of a month, in real time.
TEST_F(RecordsTest, AMonthsEndInRealTimeClosesTheDayAndTheMonth) {
    if (!SetClock::can_be_had()) GTEST_SKIP() << "libfaketime is not installed";
    folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\ntmidnight=True\r\ntnineam=False\r\n");
    SetClock clock;
    clock.show(sys_days(2026y / October / 31) + 23h + 45min);
    RunningCopy copy(folder, station.device(), {.environment = clock.environment("UTC"), .in_child = {}});
    ASSERT_TRUE(copy.listens());
    ASSERT_TRUE(takes_train(copy, october(23, 59, 30, 31)));
    ASSERT_TRUE(takes_train(copy, october(23, 59, 40, 31)));
    ASSERT_TRUE(takes_train(copy, october(23, 59, 50, 31)));
    EXPECT_TRUE(eventually([&] { return copy.logged(" Changeover process completed successfully") == 1; }));
    clock.show(sys_days(2026y / October / 31) + 23h + 59min + 57s);
    // In the new day's first minute no second changeover comes of it.
    StationReadings::Moment november{5, 0, 0, 1, 11};
    EXPECT_TRUE(eventually([&] {
        if (!takes_train(copy, november)) return false;
        november.second = std::min(november.second + 1, 59);
        return folder.contents("rnslm.dat").starts_with("01 Nov 2026 00:00:");
    }));
    EXPECT_EQ(copy.logged(" Changeover process completed successfully"), 1);
    EXPECT_EQ(copy.logged("31 Oct 2026 23:59:50 Almanac successfully archived and rolled over"), 1);
    EXPECT_FALSE(folder.holds("nbextreme.log"));
    const auto rows = rows_of(folder.contents("alOct26.csv"));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(rows[0].starts_with("31,Oct,+12.3,23:59,")) << rows[0];
    EXPECT_EQ(lines_of(folder.contents("NBYSummary.txt")).front(), "Nimbry monthly summary for October 2026");
    EXPECT_EQ(lines_of(folder.contents("nimbrYDay.log")).front(), "31 Oct 2026 23:58:50");

    // The computer's midnight fell into this run: the copy began before it, and now the clock stands behind it.
    EXPECT_TRUE(copy.log().at(1).starts_with("31 Oct 2026 23:4")) << copy.log().at(1);
    EXPECT_TRUE(eventually([&] { return takes_train(copy, {0, 0, 2, 1, 11}) && clock_error_at("01 Nov 2026 00:0"); }));
}

// The same over a daylight-saving night: the computer's clock goes back an hour while the copy runs, the station's does
// not.
TEST_F(RecordsTest, ADaylightSavingNightMovesNoRecord) {
    if (!SetClock::can_be_had()) GTEST_SKIP() << "libfaketime is not installed";
    folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
    SetClock clock;
    clock.show(sys_days(2026y / October / 25) + 0h + 45min);  // the first of the night's two 01:45
    RunningCopy copy(folder, station.device(), {.environment = clock.environment("Europe/London"), .in_child = {}});
    ASSERT_TRUE(copy.listens());
    StationReadings readings;
    readings.clock = october(2, 0, 10, 25);
    ASSERT_TRUE(takes_train(copy, readings.clock));
    readings.clock.second = 20;
    clock.show(sys_days(2026y / October / 25) + 0h + 59min + 57s);
    // Once the computer's clock has gone back to one, the two are an hour apart.
    ASSERT_TRUE(eventually([&] { return takes_train(copy, readings.clock) && clock_error_at("25 Oct 2026 01:0"); }));
    EXPECT_TRUE(copy.log().at(1).starts_with("25 Oct 2026 01:4")) << copy.log().at(1);
    readings.clock.second = 30;
    ASSERT_TRUE(takes_train(copy, readings.clock));
    copy.signal(SIGINT);
    ASSERT_EQ(copy.ending(), exited(0));
    const auto today = lines_of(folder.contents("nimbrTDay.log"));
    ASSERT_EQ(today.size(), 33U);
    EXPECT_EQ(today[0], "25 Oct 2026 02:00:40");
    EXPECT_EQ(today[2], "02:00");
}

}  // namespace
}  // namespace nimbry::system_test
