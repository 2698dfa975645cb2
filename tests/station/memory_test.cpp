#include "programs/nimbry-station/memory.h"

#include <gtest/gtest.h>

#include <chrono>

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr CivilTime begin = std::chrono::local_days{std::chrono::year{2026} / 5 / 1};

TEST(StationChill, FollowsItsFormulaWhereItHasAMeaning) {
    // Worked out apart: 0.045 * (5.2735 * sqrt(v) + 10.45 - 0.2778 * v) * (t - 33) + 33, v in km/h.
    EXPECT_NEAR(station_chill_c(0, 10), -14.654, 0.001);
    EXPECT_NEAR(station_chill_c(10, 5), 4.203, 0.001);
    EXPECT_EQ(station_chill_c(-10, 1), -10) << "hardly any wind";
    EXPECT_EQ(station_chill_c(34, 10), 34) << "warmer than skin";
}

TEST(StationTrend, ChangesAtOneHectopascalInThreeHours) {
    EXPECT_EQ(trend_digit(1), 1);
    EXPECT_EQ(trend_digit(0.9), 2);
    EXPECT_EQ(trend_digit(-0.9), 2);
    EXPECT_EQ(trend_digit(-1), 4);
}

TEST(StationForecast, FollowsTheGlassAndItsTrend) {
    EXPECT_EQ(outlook_digit(1030, 0), 1);
    EXPECT_EQ(outlook_digit(1013, 0), 4);
    EXPECT_EQ(outlook_digit(1005, 0), 2);
    EXPECT_EQ(outlook_digit(990, 0), 8);
    EXPECT_EQ(outlook_digit(1013, -3), 8) << "a glass that falls fast";
    EXPECT_EQ(outlook_digit(1005, 2), 1) << "a glass that rises fast";
}

TEST(Memory, JudgesTheTrendOverTheLastThreeHours) {
    Memory memory;
    Values values;
    double hpa = 1000;
    int lived = 0;
    const auto trend_after = [&](double change_per_hour, int hours) {
        for (int n = 0; n < hours * 6; ++n) {
            hpa += change_per_hour / 6;
            values[Reading::barometer] = hpa;
            memory.live(values, begin + ++lived * 10min, begin);
        }
        memory.recall(values);
        return values[Reading::trend];
    };
    EXPECT_EQ(trend_after(0, 4), 2);
    EXPECT_EQ(trend_after(0.5, 4), 1) << "1.5 in three hours";
    EXPECT_EQ(trend_after(0, 4), 2) << "what was four hours ago no longer counts";
    EXPECT_EQ(trend_after(-0.5, 4), 4);
}

TEST(Memory, CountsRainByRateAndTimeAndSendsWholeMillimetres) {
    Memory memory;
    Values values;
    memory.live(values, begin, begin);
    values[Reading::rain_rate] = 6;  // 1 mm in ten minutes
    memory.live(values, begin + 19min, begin);
    memory.recall(values);
    EXPECT_EQ(values[Reading::rain_total], 1) << "1.9 mm";
    memory.live(values, begin + 21min, begin);
    memory.recall(values);
    EXPECT_EQ(values[Reading::rain_total], 2) << "2.1 mm";
}

TEST(Memory, TheCounterNeverFallsBetweenResets) {
    Memory memory;
    Values values;
    double last = 0;
    for (int n = 0; n < 1000; ++n) {
        values[Reading::rain_rate] = n % 50;
        memory.live(values, begin + n * 1min, begin);
        memory.recall(values);
        ASSERT_GE(values[Reading::rain_total], last);
        last = values[Reading::rain_total];
    }
    EXPECT_GT(last, 300);
}

}  // namespace
}  // namespace nimbry::simulator
