#pragma once

#include <ostream>
#include <string>

#include "engine/alarms/alarm_checks.h"
#include "engine/displays/box_list.h"
#include "tests/engine/station/decoding.h"

namespace nimbry::test {

/// One threshold, and a station that says exactly its value.
struct ThresholdCase {
    const char* what;
    AlarmId id;
    float value;
    void (*say)(StationReadings&);
    const char* box;
    Colour normal;
    const char* clause;
};

inline const ThresholdCase threshold_cases[]{
    {"outdoor temperature, high", AlarmId::ATempHi, 37.8F, [](StationReadings& s) { s.temperature.outdoor = 37.8; },
     "Text2(0)", 0x80FF80, "the outside temperature is above the alarm threshold"},
    {"outdoor temperature, low", AlarmId::ATempLo, -12.4F, [](StationReadings& s) { s.temperature.outdoor = -12.4; },
     "Text2(0)", 0x80FF80, "the outside temperature is below the alarm threshold"},
    {"humidity, high", AlarmId::AHumHi, 95, [](StationReadings& s) { s.humidity.outdoor = 95; }, "Text2(2)", 0x80FF80,
     "the humidity is above the alarm threshold"},
    {"humidity, low", AlarmId::AHumLo, 20, [](StationReadings& s) { s.humidity.outdoor = 20; }, "Text2(2)", 0x80FF80,
     "the humidity is below the alarm threshold"},
    {"barometer, high", AlarmId::ABarHi, 1030, [](StationReadings& s) { s.barometer.hpa = 1030; }, "Text2(4)", 0x80FF80,
     "the barometric pressure is above the alarm threshold"},
    {"barometer, low", AlarmId::ABarLo, 995, [](StationReadings& s) { s.barometer.hpa = 995; }, "Text2(4)", 0x80FF80,
     "the barometric pressure is below the alarm threshold"},
    {"gust", AlarmId::AWindHi, 17.3F, [](StationReadings& s) { s.wind.gust_ms = 17.3; }, "Text2(6)", 0x80FF80,
     "the wind speed is above the alarm threshold"},
    {"peak rain rate", AlarmId::ARainHi, 50, [](StationReadings& s) { s.rain.rate_mm = 50; }, "TxtPeakRain", 0xFF80FF,
     "the peak rainfall rate is above the alarm threshold"},
    // The counter stands at 123 mm when the day's rain begins to be counted.
    {"rain of the day", AlarmId::ARainAm, 25, [](StationReadings& s) { s.rain.total_mm = 148; }, "TxtRainToday",
     0xFF80FF, "the rainfall amount since 9.00am is above the alarm threshold"},
    // 20 degrees at 50 percent: 9.25 by the formula, 9.3 as a reading.
    {"dew point, high", AlarmId::ADewHi, 9.3F,
     [](StationReadings& s) {
         s.temperature.outdoor = 20;
         s.humidity.outdoor = 50;
     },
     "Text2(1)", 0x80FF80, "the dew point is above the alarm threshold"},
    // -10 degrees at 80 percent: -12.78 by the formula, -12.8 as a reading.
    {"dew point, low", AlarmId::ADewLo, -12.8F,
     [](StationReadings& s) {
         s.temperature.outdoor = -10;
         s.humidity.outdoor = 80;
     },
     "Text2(1)", 0x80FF80, "the dew point is below the alarm threshold"},
    {"indoor temperature, high", AlarmId::AItempHi, 25.7F, [](StationReadings& s) { s.temperature.indoor = 25.7; },
     "Text2(8)", 0x80FF80, "the indoor temperature is above the alarm threshold"},
    {"indoor temperature, low", AlarmId::AItempLo, 10, [](StationReadings& s) { s.temperature.indoor = 10; },
     "Text2(8)", 0x80FF80, "the indoor temperature is below the alarm threshold"},
};

inline void PrintTo(const ThresholdCase& c, std::ostream* out) {
    *out << c.what;
}

/// A copy whose second train has been decoded, without any alarm switched on.
class AlarmDecoding : public Decoding {
protected:
    // The second train is the first that is decoded: it gives the rain of the day its base.
    AlarmDecoding() { train(); }

    AlarmState& alarms = state.alarms;
    AlarmsDialog& dialog = alarms.frmAlarms;

    void set(AlarmId id, float threshold) {
        dialog.*alarm_row(id).threshold = threshold;
        dialog.*alarm_row(id).enabled = true;
    }
    [[nodiscard]] Colour back(const char* box) { return find_box(state, box)->back; }
    /// What a save of the extremes and the end of TimAlarm would do.
    void calm(const ThresholdCase& c) {
        alarms.AlarmCondition = false;
        alarms.AlarmReason.clear();
        find_box(state, c.box)->back = c.normal;
    }
};

}  // namespace nimbry::test
