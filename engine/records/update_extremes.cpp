#include "engine/records/update_extremes.h"

#include "engine/derived/number_text.h"
#include "engine/records/extremes_display.h"
#include "engine/station/humidity.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

// Both sides are singles: held as a double, 12.3 would lie below its own record and its time would not move.
void raise_to(double reading, float& record, std::string& record_time, const std::string& time) {
    const auto value = static_cast<float>(reading);
    if (!(value >= record)) return;
    record = value;
    record_time = time;
}

void lower_to(double reading, float& record, std::string& record_time, const std::string& time) {
    const auto value = static_cast<float>(reading);
    if (!(value <= record)) return;
    record = value;
    record_time = time;
}

void update_dew_point(Copy& copy, const std::string& time) {
    WeatherState& state = copy.state;
    DayExtremes& day = state.records.day;
    const Readings& readings = state.readings;
    raise_to(readings.dewnative, day.maxdew, day.maxdewtime, time);
    lower_to(readings.dewnative, day.mindew, day.mindewtime, time);
    show_today_dew_point(state);
    if (state.log_fields.loghind != "n.a.") {
        raise_to(readings.hinative, day.maxhi, day.maxhitime, time);
        show_today_heat_index(state);
    }
    if (!both_winds_sound(copy)) return;
    lower_to(readings.chillnative, day.minwc, day.minwctime, time);
    show_today_chill(state);
}

void update_temperature(Copy& copy, const std::string& time) {
    if (!sensor_sound(copy, Sensor::outdoor_temperature)) return;
    WeatherState& state = copy.state;
    DayExtremes& day = state.records.day;
    const double temperature = Val(state.readings.rawostemp);
    raise_to(temperature, day.maxtemp, day.maxtemptime, time);
    lower_to(temperature, day.mintemp, day.mintemptime, time);
    show_today_temperature(state);
    if (sensor_sound(copy, Sensor::outdoor_humidity)) update_dew_point(copy, time);
}

void update_humidity(Copy& copy, const std::string& time) {
    if (!sensor_sound(copy, Sensor::outdoor_humidity)) return;
    DayExtremes& day = copy.state.records.day;
    const double humidity = Val(outdoor_humidity_text(copy.state));
    raise_to(humidity, day.maxhum, day.maxhumtime, time);
    lower_to(humidity, day.minhum, day.minhumtime, time);
    show_today_humidity(copy.state);
}

void update_gust(Copy& copy, const std::string& time) {
    if (!sensor_sound(copy, Sensor::wind)) return;
    DayExtremes& day = copy.state.records.day;
    const double gust = Val(copy.state.readings.rawwindgs);
    if (static_cast<float>(gust) >= day.maxwind) day.maxwindir = numtext(copy.state.readings.gdirint) + "\xB0";
    raise_to(gust, day.maxwind, day.maxwindtime, time);
    show_today_gust(copy.state);
}

void update_rain_rate(Copy& copy, const std::string& time) {
    if (!sensor_sound(copy, Sensor::rain)) return;
    DayExtremes& day = copy.state.records.day;
    const auto rate = static_cast<float>(copy.state.readings.RainRateMm);
    // Kept on purpose: the one strict test; the first time of the day stays.
    if (rate > day.maxrain) {
        day.maxrain = rate;
        day.maxraintime = time;
    }
    show_today_rain_rate(copy.state);
}

}  // namespace

void update_outdoor_extremes(Copy& copy) {
    const std::string& time = copy.state.log_fields.logtime;
    update_temperature(copy, time);
    update_humidity(copy, time);
    update_gust(copy, time);
    update_rain_rate(copy, time);
}

void update_indoor_extremes(Copy& copy) {
    WeatherState& state = copy.state;
    DayExtremes& day = state.records.day;
    const std::string& time = state.log_fields.logtime;
    if (sensor_sound(copy, Sensor::barometer)) {
        raise_to(state.readings.BaroValue, day.maxbar, day.maxbartime, time);
        lower_to(state.readings.BaroValue, day.minbar, day.minbartime, time);
        show_today_barometer(state);
    }
    if (sensor_sound(copy, Sensor::indoor_temperature)) {
        const double temperature = Val(state.readings.rdatitempsign + state.readings.rdatitemp);
        raise_to(temperature, day.maxintemp, day.maxintemptime, time);
        lower_to(temperature, day.minintemp, day.minintemptime, time);
        show_today_indoor(state);
    }
    sensor_sound(copy, Sensor::indoor_humidity);  // asked for its notice: it has no record
}

}  // namespace nimbry
