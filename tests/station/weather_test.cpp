#include "programs/nimbry-station/weather.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

#include "programs/nimbry-station/noise.h"

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr CivilTime new_year = std::chrono::local_days{std::chrono::year{2026} / 1 / 1};

/// A year of one seed, a moment every half hour.
class YearOfWeather : public testing::TestWithParam<std::uint64_t> {
protected:
    void SetUp() override {
        for (CivilTime t = new_year; t < new_year + 24h * 365; t += 30min) year_.push_back(weather_at(GetParam(), t));
    }
    [[nodiscard]] double mean(double Weather::*field, std::size_t first, std::size_t count) const {
        double sum = 0;
        for (std::size_t n = first; n < first + count; ++n) sum += year_[n].*field;
        return sum / static_cast<double>(count);
    }
    static constexpr std::size_t a_day = 48;
    std::vector<Weather> year_;
};

INSTANTIATE_TEST_SUITE_P(SomeSeeds, YearOfWeather, testing::Values(0, 1, 42, UINT64_MAX));

TEST_P(YearOfWeather, StaysWithinTheRangesOfTheSensors) {
    for (const Weather& w : year_) {
        ASSERT_GE(w.pressure_hpa, 950);
        ASSERT_LE(w.pressure_hpa, 1046);
        ASSERT_GE(w.cloud, 0);
        ASSERT_LE(w.cloud, 1);
        ASSERT_GE(w.outdoor_c, -30);
        ASSERT_LE(w.outdoor_c, 42);
        ASSERT_GE(w.outdoor_rh, 15) << "a humidity of 0 has no dew point";
        ASSERT_LE(w.outdoor_rh, 100);
        ASSERT_GE(w.indoor_c, 14);
        ASSERT_LE(w.indoor_c, 29);
        ASSERT_GE(w.indoor_rh, 25);
        ASSERT_LE(w.indoor_rh, 70);
        ASSERT_GE(w.rain_mm_h, 0);
        ASSERT_LE(w.rain_mm_h, 150);
        ASSERT_GE(w.average_ms, 0);
        ASSERT_LE(w.gust_ms, 50);
        ASSERT_GE(w.average_degrees, 0);
        ASSERT_LT(w.average_degrees, 360);
        ASSERT_GE(w.gust_degrees, 0);
        ASSERT_LT(w.gust_degrees, 360);
    }
}

TEST_P(YearOfWeather, HasNoGustBelowTheAverageAndNoDewPointAboveTheTemperature) {
    for (const Weather& w : year_) {
        ASSERT_GE(w.gust_ms, w.average_ms);
        ASSERT_LE(w.dew_point_c, w.outdoor_c);
    }
}

TEST_P(YearOfWeather, IsWarmerInJulyThanInJanuaryByTenDegreesOrMore) {
    EXPECT_GE(mean(&Weather::outdoor_c, 181 * a_day, 31 * a_day), mean(&Weather::outdoor_c, 0, 31 * a_day) + 10);
}

TEST_P(YearOfWeather, IsWarmerAndDrierInTheAfternoonThanBeforeDawnOnMostDays) {
    int warmer = 0, drier = 0;
    for (std::size_t day = 0; day < 365; ++day) {
        const Weather& dawn = year_[day * a_day + 3 * 2];
        const Weather& afternoon = year_[day * a_day + 15 * 2];
        warmer += afternoon.outdoor_c > dawn.outdoor_c ? 1 : 0;
        drier += afternoon.outdoor_rh < dawn.outdoor_rh ? 1 : 0;
    }
    EXPECT_GT(warmer, 290);
    EXPECT_GT(drier, 240);
}

TEST_P(YearOfWeather, BringsShowersAndDrySpells) {
    double fallen_mm = 0;
    int wet_hours = 0;
    for (const Weather& w : year_) {
        fallen_mm += w.rain_mm_h / 2;
        wet_hours += w.rain_mm_h > 0.1 ? 1 : 0;
    }
    wet_hours /= 2;
    EXPECT_GT(fallen_mm, 300);
    EXPECT_LT(fallen_mm, 2500);
    EXPECT_GT(wet_hours, 100);
    EXPECT_LT(wet_hours, 2000);
}

TEST_P(YearOfWeather, RainsAndBlowsMoreUnderALowGlassThanUnderAHighOne) {
    double low_rain = 0, high_rain = 0, low_wind = 0, high_wind = 0;
    int lows = 0, highs = 0;
    for (const Weather& w : year_) {
        if (w.pressure_hpa < 1003) {
            ++lows;
            low_rain += w.rain_mm_h;
            low_wind += w.average_ms;
        } else if (w.pressure_hpa > 1020) {
            ++highs;
            high_rain += w.rain_mm_h;
            high_wind += w.average_ms;
        }
    }
    ASSERT_GT(lows, 100);
    ASSERT_GT(highs, 100);
    EXPECT_GT(low_rain / lows, 10 * high_rain / highs);
    EXPECT_GT(low_wind / lows, high_wind / highs);
}

TEST_P(YearOfWeather, TurnsTheWindThroughAllQuartersAndKnowsCalms) {
    std::vector<int> quarters(4);
    int calms = 0;
    for (const Weather& w : year_) {
        ++quarters[static_cast<std::size_t>(w.average_degrees / 90)];
        calms += w.average_ms < 0.2 ? 1 : 0;
    }
    for (const int quarter : quarters) EXPECT_GT(quarter, 100);
    EXPECT_GT(calms, 100);
    EXPECT_LT(calms, 17520 / 4);
}

TEST_P(YearOfWeather, GoesOnWithoutAJumpFromOneTrainToTheNext) {
    // Half a million trains are too many for a test: every 179th, which meets every hour of the day and each month.
    for (CivilTime t = new_year; t < new_year + 24h * 365; t += 1790s) {
        const Weather now = weather_at(GetParam(), t), then = weather_at(GetParam(), t + 10s);
        ASSERT_NEAR(now.outdoor_c, then.outdoor_c, 0.2);
        ASSERT_NEAR(now.outdoor_rh, then.outdoor_rh, 2);
        ASSERT_NEAR(now.indoor_c, then.indoor_c, 0.05);
        ASSERT_NEAR(now.indoor_rh, then.indoor_rh, 0.1);
        ASSERT_NEAR(now.pressure_hpa, then.pressure_hpa, 0.05);
        ASSERT_NEAR(now.rain_mm_h, then.rain_mm_h, 2);
        ASSERT_NEAR(now.average_ms, then.average_ms, 1);
        ASSERT_LT(std::abs(std::remainder(now.average_degrees - then.average_degrees, 360)), 5);
    }
}

TEST_P(YearOfWeather, NeverLeavesGustsStandingStillInAWind) {
    int windy = 0, unchanged = 0;
    for (CivilTime t = new_year; t < new_year + 24h * 365; t += 1h) {
        const Weather now = weather_at(GetParam(), t), then = weather_at(GetParam(), t + 30s);
        if (now.average_ms < 3) continue;
        ++windy;
        unchanged += std::abs(now.gust_ms - then.gust_ms) < 0.05 ? 1 : 0;
    }
    ASSERT_GT(windy, 500);
    EXPECT_LT(unchanged, windy / 5);
}

TEST(Weather, IsTheSameForTheSameSeedAndMomentInAnyOrder) {
    const CivilTime later = new_year + 100h;
    const Weather first = weather_at(7, new_year);
    const Weather there = weather_at(7, later);
    const Weather again = weather_at(7, new_year);
    EXPECT_EQ(first.outdoor_c, again.outdoor_c);
    EXPECT_EQ(first.gust_ms, again.gust_ms);
    EXPECT_EQ(there.pressure_hpa, weather_at(7, later).pressure_hpa);
}

TEST(Weather, DiffersFromSeedToSeed) {
    EXPECT_NE(weather_at(1, new_year).pressure_hpa, weather_at(2, new_year).pressure_hpa);
    EXPECT_NE(weather_at(1, new_year).outdoor_c, weather_at(2, new_year).outdoor_c);
}

TEST(SmoothNoise, TakesTheKnotsValuesAtTheKnotsAndStaysBetweenThem) {
    for (int knot = -20; knot < 20; ++knot) {
        const double here = smooth_noise(3, 5, knot * 60.0, 60), there = smooth_noise(3, 5, (knot + 1) * 60.0, 60);
        for (double part = 0; part < 60; part += 7) {
            const double between = smooth_noise(3, 5, knot * 60.0 + part, 60);
            EXPECT_GE(between, std::min(here, there) - 1e-12);
            EXPECT_LE(between, std::max(here, there) + 1e-12);
        }
        EXPECT_NEAR(smooth_noise(3, 5, knot * 60.0 + 30, 60), (here + there) / 2, 1e-12) << "half way is the mean";
    }
}

TEST(SmoothNoise, FillsItsRangeEvenlyAroundZero) {
    double sum = 0, lowest = 1, highest = -1;
    for (int knot = 0; knot < 10000; ++knot) {
        const double value = smooth_noise(1, 1, knot, 1);
        sum += value;
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    EXPECT_NEAR(sum / 10000, 0, 0.03);
    EXPECT_GE(lowest, -1);
    EXPECT_LT(lowest, -0.99);
    EXPECT_LE(highest, 1);
    EXPECT_GT(highest, 0.99);
}

}  // namespace
}  // namespace nimbry::simulator
