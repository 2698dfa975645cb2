#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "engine/derived/dates.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {

/// A copy whose first train has gone by, on 5 October 2026 at 14:00, in Celsius, km/h, mB and mm, and a station to ask
/// for more.
class Decoding : public testing::Test {
protected:
    Decoding() {
        state.settings.newchill = true;
        train();
    }

    /// The next train, ten seconds on.
    void train() {
        now += std::chrono::seconds{10};
        station.clock = station_moment(now);
        world.train(station);
    }
    void lone() { world.lone(station); }

    /// A train of which one digit is overwritten; its checksums are right.
    void train_with(std::uint8_t tag, int place, int value) {
        now += std::chrono::seconds{10};
        station.clock = station_moment(now);
        Bytes bytes = write_train(station);
        set_digit(bytes, tag, place, value);
        seal(bytes);
        world.frame(bytes);
    }

    void use(TemperatureUnit unit) {
        state.settings.fTempF = unit == TemperatureUnit::fahrenheit;
        state.units = units_from(state.settings);
    }
    void use(WindUnit unit) {
        state.settings.fWindms = unit == WindUnit::ms;
        state.settings.fWindmph = unit == WindUnit::mph;
        state.settings.fWindknots = unit == WindUnit::knots;
        state.units = units_from(state.settings);
    }
    void use(BarometerUnit unit) {
        state.settings.fBarhpa = unit == BarometerUnit::hpa;
        state.settings.fBarinhg = unit == BarometerUnit::inhg;
        state.units = units_from(state.settings);
    }
    void use(RainUnit unit) {
        state.settings.fRainin = unit == RainUnit::inches;
        state.units = units_from(state.settings);
    }

    BareCopy world;
    WeatherState& state = world.state;
    Readings& readings = state.readings;
    MainPanel& panel = state.panel;
    StationReadings station;
    CivilTime now = *civil_time({2026, 10, 5, 14, 0, 0});
};

}  // namespace nimbry::test
