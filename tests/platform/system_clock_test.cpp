#include "platform/system_clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace nimbry::platform {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

/// The zone of the process, for the length of a test.
class Zone {
public:
    explicit Zone(const char* name) {
        if (const char* const before = std::getenv("TZ")) before_ = before;
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone() {
        if (before_.empty()) {
            unsetenv("TZ");
        } else {
            setenv("TZ", before_.c_str(), 1);
        }
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

private:
    std::string before_;
};

// A zone written out, so that the test needs no zone files: one hour ahead of UTC, two from the last Sunday of March
// 02:00 to the last Sunday of October 03:00.
constexpr const char* central_europe = "CET-1CEST,M3.5.0,M10.5.0/3";

TEST(CivilTimeOfAMoment, FollowsTheZone) {
    const Zone zone(central_europe);
    const sys_seconds winter = sys_days(2026y / January / 15) + 11h + 30min;
    EXPECT_EQ(civil_time(winter), local_days(2026y / January / 15) + 12h + 30min);
}

TEST(CivilTimeOfAMoment, FollowsDaylightSaving) {
    const Zone zone(central_europe);
    const sys_seconds before = sys_days(2026y / October / 25) + 0h + 59min + 59s;
    EXPECT_EQ(civil_time(before), local_days(2026y / October / 25) + 2h + 59min + 59s);
    EXPECT_EQ(civil_time(before + 1s), local_days(2026y / October / 25) + 2h) << "the hour comes twice";
}

TEST(CivilTimeOfAMoment, KeepsTheDayAcrossTheYear) {
    const Zone zone("EST5");
    const sys_seconds new_year = sys_days(2027y / January / 1) + 4h + 59min + 59s;
    EXPECT_EQ(civil_time(new_year), local_days(2026y / December / 31) + 23h + 59min + 59s);
}

TEST(SystemClock, LocalTimeDiffersFromUtcByTheZonesOffset) {
    const Zone zone("XYZ-3:30");
    const SystemClock clock;
    const CivilTime utc = clock.utc_time();
    const CivilTime local = clock.computer_time();
    EXPECT_GE(local - utc, 3h + 30min);
    EXPECT_LE(local - utc, 3h + 31min) << "no more than the time between the two calls";
}

TEST(SystemClock, TheMonotonicClockDoesNotGoBack) {
    const SystemClock clock;
    Instant last = clock.monotonic();
    for (int n = 0; n < 1000; ++n) {
        const Instant now = clock.monotonic();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST(SystemClockTest, TheSecondsOfTheDayAreThoseOfTheCivilTime) {
    const Zone zone(central_europe);
    const SystemClock clock;
    const CivilTime before = clock.computer_time();
    const double of_day = clock.seconds_of_day();
    const CivilTime after = clock.computer_time();
    const auto seconds_of = [](CivilTime time) { return duration<double>(time - floor<days>(time)).count(); };
    if (floor<days>(before) != floor<days>(after)) return;  // midnight lay between the looks
    EXPECT_GE(of_day, seconds_of(before));
    EXPECT_LT(of_day, seconds_of(after) + 1);
}

}  // namespace
}  // namespace nimbry::platform
