#include <gtest/gtest.h>

#include <random>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

struct KindCase {
    const char *name, *keys;
    std::chrono::seconds change;  // of the day
    // Rows of a month's archive: its own days for a day that ends at midnight; in the morning kinds the first row is
    // the 2nd's and the last the next month's 1st.
    const char *first_row, *last_row;
};

// A leap year and the first day of the next, with three trains before each change.
TEST(Year, EachKindOfChangeoverClosesEveryDayAndEveryMonth) {
    const KindCase cases[] = {
        {"midnight", "tmidnight=True\r\ntnineam=False\r\n", 24h, "1,", "29,Feb,"},
        {"nine", "", 9h, "2,", "1,Mar,"},
        {"ten", "AddOneHour=True\r\n", 10h, "2,", "1,Mar,"},
    };
    const int days_of[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (const KindCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays days(at(1, 1, 0, 0, 0, 2028) + c.change - 30s, c.keys);
        days.start();
        int changes = 0;
        for (CivilTime day = at(1, 1, 0, 0, 0, 2028); day <= at(1, 1, 0, 0, 0, 2029); day += 24h, ++changes)
            days.trains(day + c.change - 30s, day + c.change - 10s);
        EXPECT_EQ(days.changeovers(), changes);
        EXPECT_EQ(days.logged(" Almanac successfully archived and rolled over"), c.change == 24h ? 12 : 13);
        for (int month = 1; month <= 12; ++month) {
            const std::string name = "al" + month_name(month) + "28.csv";
            SCOPED_TRACE(name);
            const auto rows = days.rows(name);
            ASSERT_EQ(rows.size(), static_cast<std::size_t>(days_of[month - 1]));
            EXPECT_TRUE(rows[0].starts_with(c.first_row + month_name(month))) << rows[0];
        }
        EXPECT_TRUE(days.rows("alFeb28.csv").back().starts_with(c.last_row));
        EXPECT_FALSE(days.world.engine.gone());
    }
}

// Four trains around each change, one in a hundred with a flipped bit, and a sound one in the afternoon: no wrong
// reading is recorded, and a day is closed when one of the last two trains is sound.
TEST(Year, OnePercentOfDamagedTrainsCostsNoDayThatAnyTrainCouldClose) {
    std::mt19937 random(1);
    WeatherDays days(at(1, 1, 8, 59, 30, 2027));
    days.start();
    int closed = 0, damaged = 0;
    for (CivilTime day = at(1, 1, 9, 0, 0, 2027); day < at(1, 1, 9, 0, 0, 2028); day += 24h) {
        bool closes = false;
        for (const auto from_the_hour : {-30s, -20s, -10s, 0s}) {
            StationReadings readings;
            readings.clock = station_moment(day + from_the_hour);
            Bytes train = write_train(readings);
            const bool damage = random() % 100 == 0;
            if (damage) train[random() % train.size()] ^= static_cast<std::uint8_t>(1U << random() % 8);
            damaged += damage;
            closes = closes || (!damage && from_the_hour >= -10s);
            days.world.clock.set_computer_time(day + from_the_hour);
            days.world.deliver(train);
        }
        closed += closes;
        days.train(day + 6h);
    }
    EXPECT_GT(damaged, 5);
    EXPECT_EQ(days.changeovers(), closed);
    int rows = 0;
    for (const std::string& name : days.world.files.names()) {
        if (!name.starts_with("al") || !name.ends_with("27.csv")) continue;
        for (const std::string& row : days.rows(name)) {
            ++rows;
            EXPECT_NE(row.find(",+12.3,"), std::string::npos);
            EXPECT_NE(row.find(",1013,"), std::string::npos);
            EXPECT_EQ(row.find("999,0"), row.find("999,00:00")) << row;  // no mark but the heat index's
        }
    }
    EXPECT_GE(rows, 330);
    EXPECT_FALSE(days.world.engine.gone());
}

}  // namespace
}  // namespace nimbry
