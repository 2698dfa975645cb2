#include "engine/records/update_extremes.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

// The numbers of a day that a fault must not touch, in the order of the day's file.
struct Seen {
    bool temperature, humidity, rain, barometer, wind, dew, indoor, chill;
    friend bool operator==(const Seen&, const Seen&) = default;
};
void PrintTo(const Seen& s, std::ostream* out) {
    *out << "temperature " << s.temperature << " humidity " << s.humidity << " rain " << s.rain << " barometer "
         << s.barometer << " wind " << s.wind << " dew " << s.dew << " indoor " << s.indoor << " chill " << s.chill;
}
Seen seen(const DayExtremes& d) {
    return {d.maxtemp != -999, d.maxhum != -999, d.maxrain != -999,   d.maxbar != -999,
            d.maxwind != -999, d.maxdew != -999, d.maxintemp != -999, d.minwc != 999};
}

struct FaultCase {
    const char* name;
    std::function<void(StationReadings&)> fault;
    Seen left;
};

TEST(ExtremesOfADay, AFaultLeavesOutItsOwnRecordsAndWhatIsMadeOfThem) {
    const FaultCase cases[] = {
        {"none", [](StationReadings&) {}, {true, true, true, true, true, true, true, true}},
        {"outdoor temperature: dew point and chill too",
         [](StationReadings& r) { r.temperature.outdoor_fault = true; },
         {false, true, true, true, true, false, true, false}},
        {"outdoor humidity: dew point and chill too",
         [](StationReadings& r) { r.humidity.outdoor_fault = true; },
         {true, false, true, true, true, false, true, false}},
        {"wind: chill too",
         [](StationReadings& r) { r.wind.fault_bits = 4; },
         {true, true, true, true, false, true, true, false}},
        {"rain", [](StationReadings& r) { r.rain.fault = true; }, {true, true, false, true, true, true, true, true}},
        {"barometer",
         [](StationReadings& r) { r.barometer.hpa = 0; },
         {true, true, true, false, true, true, true, true}},
        {"indoor temperature",
         [](StationReadings& r) { r.temperature.indoor_fault = true; },
         {true, true, true, true, true, true, false, true}},
        {"indoor humidity has no record",
         [](StationReadings& r) { r.humidity.indoor_fault = true; },
         {true, true, true, true, true, true, true, true}},
    };
    for (const FaultCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays days(at(10, 5, 14, 0));
        days.start();
        days.train(at(10, 5, 14, 0));
        StationReadings readings;
        c.fault(readings);
        // The first frame of a fault is not reported, the second is; neither is taken.
        days.train(at(10, 5, 14, 0, 10), readings);
        EXPECT_EQ(seen(days.world.state().records.day), c.left);
        days.train(at(10, 5, 14, 0, 20), readings);
        EXPECT_EQ(seen(days.world.state().records.day), c.left);
        days.train(at(10, 5, 14, 0, 30));
        EXPECT_EQ(seen(days.world.state().records.day), cases[0].left);
    }
}

class UpdateExtremes : public testing::Test {
protected:
    UpdateExtremes() : days(at(10, 5, 14, 0)) {
        days.start();
        days.train(at(10, 5, 14, 0));
    }
    const DayExtremes& day() { return days.world.state().records.day; }
    WeatherDays days;
};

TEST_F(UpdateExtremes, AFaultyLoneWindGroupCostsTheChillOnly) {
    StationReadings faulty;
    faulty.wind.fault_bits = 8;
    days.world.deliver(write_lone_wind(faulty));
    days.train(at(10, 5, 14, 0, 10));
    EXPECT_EQ(day().minwc, 999);
    EXPECT_EQ(day().maxwind, 4.2F);
    EXPECT_EQ(day().maxdew, 3.3F);
}

TEST_F(UpdateExtremes, AGustOfALoneGroupWaitsForTheTrain) {
    days.train(at(10, 5, 14, 0, 10));
    StationReadings storm;
    storm.wind.gust_ms = 30;
    days.world.deliver(write_lone_wind(storm));
    days.train(at(10, 5, 14, 0, 20));
    EXPECT_EQ(day().maxwind, 4.2F);
}

TEST_F(UpdateExtremes, ACalmGustCountsAsItWasSent) {
    StationReadings calm;
    calm.wind.gust_ms = 0.1;
    days.train(at(10, 5, 14, 0, 10), calm);
    EXPECT_EQ(day().maxwind, 0.1F);
    EXPECT_EQ(day().maxwindir, "225\xB0");
}

TEST_F(UpdateExtremes, ABearingHasNoLeadingZeros) {
    StationReadings readings;
    readings.wind.gust_direction = 5;
    days.train(at(10, 5, 14, 0, 10), readings);
    EXPECT_EQ(day().maxwindir, "5\xB0");
}

TEST_F(UpdateExtremes, ASensorOverItsRangeReadsAHundred) {
    StationReadings wet;
    wet.humidity.outdoor = 97;
    wet.humidity.outdoor_over_range = true;
    days.train(at(10, 5, 14, 0, 10), wet);
    EXPECT_EQ(day().maxhum, 100);
    EXPECT_EQ(days.world.panel().TxtHumMax.text, "100 % at 14:00");
}

// 21.4 lies above its single, 12.3 below: a comparison of unlike widths would not see them as equal.
TEST_F(UpdateExtremes, EqualReadingsAreEqualAsSingles) {
    StationReadings readings;
    readings.temperature.outdoor = readings.temperature.indoor = 21.4;
    days.train(at(10, 5, 14, 1), readings);
    days.train(at(10, 5, 14, 2), readings);
    EXPECT_EQ(day().mintemptime, "14:02");
    EXPECT_EQ(day().minintemptime, "14:02");
    EXPECT_EQ(day().maxtemptime, "14:02");
    EXPECT_EQ(day().maxintemptime, "14:02");
}

TEST_F(UpdateExtremes, OnlyAHigherOrLowerReadingMovesARecord) {
    StationReadings readings;
    readings.temperature.outdoor = -0.3;
    readings.humidity.outdoor = 80;
    readings.barometer.hpa = 990;
    readings.rain.rate_mm = 7;
    days.train(at(10, 5, 14, 1), readings);
    readings.temperature.outdoor = -12.7;
    readings.humidity.outdoor = 30;
    readings.barometer.hpa = 1030;
    readings.rain.rate_mm = 6;
    days.train(at(10, 5, 14, 2), readings);
    EXPECT_EQ(day().maxtemp, -0.3F);
    EXPECT_EQ(day().mintemp, -12.7F);
    EXPECT_EQ(day().maxhum, 80);
    EXPECT_EQ(day().minhum, 30);
    EXPECT_EQ(day().maxbar, 1030);
    EXPECT_EQ(day().minbar, 990);
    EXPECT_EQ(day().maxrain, 7);
    EXPECT_EQ(day().maxtemptime, "14:01");
    EXPECT_EQ(day().minbartime, "14:01");
    EXPECT_EQ(day().maxraintime, "14:01");
    EXPECT_EQ(days.world.panel().TxtTempMax.text, "-0.3 \260C at 14:01");
}

}  // namespace
}  // namespace nimbry
