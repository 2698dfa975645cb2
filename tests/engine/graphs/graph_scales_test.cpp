#include "engine/graphs/graph_scales.h"

#include <gtest/gtest.h>

#include <vector>

namespace nimbry {
namespace {

struct UnitCase {
    const char* unit;
    void (*choose)(Units&);
    std::vector<int> which;
    double least, greatest, tick;
};

const std::vector<int> temperatures{0, 1, 8}, winds{3, 6};

const UnitCase unit_cases[] = {
    {"m/S", [](Units& u) { u.wind = WindUnit::ms; }, winds, 0, 60, 0.5},
    {"km/h", [](Units& u) { u.wind = WindUnit::kph; }, winds, 0, 333, 0.5},
    {"MPH", [](Units& u) { u.wind = WindUnit::mph; }, winds, 0, 150, 0.5},
    {"KT", [](Units& u) { u.wind = WindUnit::knots; }, winds, 0, 120, 0.5},
    {"mB", [](Units& u) { u.barometer = BarometerUnit::mb; }, {4}, 794, 1051, 1},
    {"hPa", [](Units& u) { u.barometer = BarometerUnit::hpa; }, {4}, 794, 1051, 1},
    {"In.Hg", [](Units& u) { u.barometer = BarometerUnit::inhg; }, {4}, 22, 32, 1.325},
    {"mm", [](Units& u) { u.rain = RainUnit::mm; }, {5}, 0, 1000, 1},
    {"In.", [](Units& u) { u.rain = RainUnit::inches; }, {5}, 0, 41, 0.05},
    {"C", [](Units& u) { u.temperature = TemperatureUnit::celsius; }, temperatures, -40, 60, 1},
    {"F", [](Units& u) { u.temperature = TemperatureUnit::fahrenheit; }, temperatures, -40, 140, 2},
    {"humidity, whatever the units", [](Units&) {}, {2, 9}, 0, 100, 5},
    {"direction, whatever the units", [](Units&) {}, {7}, 0, 360, 45},
};

TEST(GraphScales, EachUnitHasItsLimitsAndTick) {
    for (const UnitCase& c : unit_cases) {
        SCOPED_TRACE(c.unit);
        WeatherState state;
        c.choose(state.units);
        setgraphscales(state);
        for (const int s : c.which) {
            const auto& row = state.graphs.gscale[static_cast<std::size_t>(s)];
            EXPECT_EQ(row[0], static_cast<float>(c.least)) << s;
            EXPECT_EQ(row[1], static_cast<float>(c.greatest)) << s;
            EXPECT_EQ(row[2], static_cast<float>(c.tick)) << s;
        }
    }
}

TEST(GraphScales, TheLimitsOfTheUnitsInForceStandUnderTheirNames) {
    WeatherState state;
    state.units.temperature = TemperatureUnit::fahrenheit;
    state.units.wind = WindUnit::knots;
    state.units.barometer = BarometerUnit::inhg;
    state.units.rain = RainUnit::inches;
    setgraphscales(state);
    const GraphLimits& l = state.graphs.limits;
    EXPECT_EQ((std::array{l.grtmin, l.grtmax, l.grttic}), (std::array{-40.0, 140.0, 2.0}));
    EXPECT_EQ((std::array{l.grwmin, l.grwmax, l.grwtic}), (std::array{0.0, 120.0, 0.5}));
    EXPECT_EQ((std::array{l.grbmin, l.grbmax, l.grbtic}), (std::array{22.0, 32.0, 1.325}));
    EXPECT_EQ((std::array{l.grrmin, l.grrmax, l.grrtic}), (std::array{0.0, 41.0, 0.05}));
}

TEST(GraphScales, ALimitItselfIsWithin) {
    WeatherState state;
    setgraphscales(state);
    EXPECT_TRUE(within_limits(state.graphs, series::outdoor_humidity, 0));
    EXPECT_TRUE(within_limits(state.graphs, series::outdoor_humidity, 100));
    EXPECT_TRUE(within_limits(state.graphs, series::direction, 360));
    EXPECT_FALSE(within_limits(state.graphs, series::direction, 361));
    EXPECT_FALSE(within_limits(state.graphs, series::barometer, 793.9F));
    EXPECT_FALSE(within_limits(state.graphs, series::outdoor_temperature, -40.1F));
}

struct AxisCase {
    const char* law;
    int s;
    void (*choose)(Units&);
    std::vector<float> values;
    double low, high;
};

void plain(Units&) {}
void inches(Units& u) {
    u.rain = RainUnit::inches;
    u.barometer = BarometerUnit::inhg;
}

const AxisCase axis_cases[] = {
    {"from the tick below to the tick above", 0, plain, {8.1F, 14.7F}, 8, 15},
    {"a value on a tick needs no further one", 0, plain, {8, 15}, 8, 15},
    {"below zero too", 0, plain, {-3.2F, 1.5F}, -4, 2},
    {"at least two ticks, upwards", 0, plain, {8.5F, 8.5F}, 8, 10},
    {"two ticks from a value on a tick", 0, plain, {8}, 8, 10},
    {"downwards at the greatest value", 0, plain, {60}, 58, 60},
    {"wind begins at 0", 3, plain, {7.2F, 9.4F}, 0, 9.5},
    {"gusts too", 6, plain, {30.1F}, 0, 30.5},
    {"a calm day has an axis of two ticks", 3, plain, {0, 0}, 0, 1},
    {"rain begins at 0", 5, plain, {2.5F, 7}, 0, 7},
    {"a dry day", 5, plain, {0}, 0, 2},
    {"rain in inches: a single beside its tick counts as on it", 5, inches, {2.55F}, 0, 2.55},
    {"also when the single lies just above it", 5, inches, {0.15F}, 0, 0.15},
    {"the barometer counts its ticks from 794", 4, plain, {1009, 1013}, 1009, 1013},
    {"inches of mercury in their odd step", 4, inches, {29.92F}, 28.625, 31.275},
    {"clipped at the greatest, and then longer downwards", 4, inches, {31.5F}, 29.35, 32},
    {"humidity always shows it all", 2, plain, {50, 60}, 0, 100},
    {"indoors too", 9, plain, {50, 60}, 0, 100},
    {"and so does the direction", 7, plain, {90}, 0, 360},
    {"a value outside the limits does not count", 4, plain, {0, 1009, 1013, 2000}, 1009, 1013},
    {"without a value the whole range", 4, plain, {0}, 794, 1051},
    {"without a sample the whole range", 0, plain, {}, -40, 60},
};

TEST(GraphScales, AnAxisFitsWhatItShows) {
    for (const AxisCase& c : axis_cases) {
        SCOPED_TRACE(c.law);
        WeatherState state;
        c.choose(state.units);
        setgraphscales(state);
        for (const float value : c.values) {
            GraphRow row;
            row.set_gdata(c.s, value);
            state.graphs.rows.append(row);
        }
        const GraphAxis axis = axis_of(state.graphs, c.s);
        EXPECT_NEAR(axis.low, c.low, 1e-4);
        EXPECT_NEAR(axis.high, c.high, 1e-4);
    }
}

TEST(GraphScales, SeriesOfOnePaneShareTheLowestLowAndTheHighestHighEnd) {
    WeatherState state;
    setgraphscales(state);
    GraphRow row;
    const float values[] = {8.5F, 4.2F, 50, 9.7F, 1013, 0, 31.2F, 200, 20.5F, 40};
    for (int s = 0; s < series::count; ++s) row.set_gdata(s, values[s]);
    state.graphs.rows.append(row);

    level_scales(state.graphs, true);
    for (const int s : temperatures) {
        EXPECT_EQ(drawn_axis(state.graphs, s).low, 4) << s;
        EXPECT_EQ(drawn_axis(state.graphs, s).high, 22) << s;
    }
    for (const int s : winds) {
        EXPECT_EQ(drawn_axis(state.graphs, s).low, 0) << s;
        EXPECT_EQ(drawn_axis(state.graphs, s).high, 31.5) << s;
    }
    EXPECT_EQ(state.graphs.gscale[10][2], 2.25F) << "an eighth of the axis";
    EXPECT_EQ(state.graphs.gscale[0][0], -40) << "the limits stay";

    level_scales(state.graphs, false);
    EXPECT_EQ(drawn_axis(state.graphs, 0).low, 4);
    EXPECT_EQ(drawn_axis(state.graphs, 0).high, 10) << "indoors takes no part";
    EXPECT_EQ(drawn_axis(state.graphs, 1).high, 10);
    EXPECT_EQ(drawn_axis(state.graphs, 8).high, 22) << "and keeps its own";
    EXPECT_EQ(state.graphs.gscale[20], (std::array<float, 3>{})) << "the spare row";
}

}  // namespace
}  // namespace nimbry
