#include "engine/records/rain.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/file_steps.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/derived/text_lines.h"
#include "engine/records/changeover_word.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

const std::string midnight_file = "rnslm.dat";

std::chrono::local_days date_of(CivilTime time) {
    return std::chrono::floor<std::chrono::days>(time);
}

// The base with which the day's total is the one that was read from today's file.
float recovered_base(float counter, float total) {
    const float base = counter - total;
    return base < 0 ? counter + std::fabs(total) : base;
}

void show_rain_of_the_day(WeatherState& state) {
    const double shown = Round(static_cast<double>(state.rain.raintoday) * state.units.rcorr, 2);
    Box& box = state.panel.TxtRainToday;
    box.text = shown == 0 ? " nil" : with_unit(shown, state.units.rain_text);
    box.balloon = "Rainfall Since" + std::string(changeover_word(state.settings));
}

void remember_start_of_date(WeatherState& state) {
    if (!state.readings.dtvar) return;
    const auto date = date_of(*state.readings.dtvar);
    std::optional<RainState::DateStart>& start = state.rain.date_start;
    if (!start || start->date != date) start = {date, state.rain.rainnow};
}

// What the station's counter can say.
float counter_value(std::string_view text) {
    return static_cast<float>(std::clamp(Val(text), 0.0, 1e9));
}

// The last counter that the midnight file gives for a date.
std::optional<float> counter_at_midnight(const std::string& contents, std::chrono::local_days date) {
    std::optional<float> found;
    bool counter_follows = false;
    std::string_view rest = contents;
    while (!rest.empty()) {
        const std::string line(take_line(rest, LineEnds::newline));
        if (const auto stamp = parse_stamp(line)) {
            counter_follows = date_of(*stamp) == date;
        } else if (counter_follows) {
            found = counter_value(repcomma(line));
            counter_follows = false;
        }
    }
    return found;
}

}  // namespace

float rain_counter(const Readings& readings) {
    return counter_value(readings.rdattotrain);
}

void rain_of_the_day(Copy& copy) {
    WeatherState& state = copy.state;
    RainState& rain = state.rain;
    const bool first = std::exchange(state.run.firstrun, false);
    rain.rainnow = rain_counter(state.readings);
    const bool fell = rain.rainbefore && rain.rainnow < *rain.rainbefore;

    if (first && !state.run.YFileOK) rain.rainatchange = recovered_base(rain.rainnow, rain.raintoday);
    if (rain.rainatchange > rain.rainnow && (fell || first)) {
        // Kept on purpose: a plus sign, so that after a reset the day's total reads negative until the changeover.
        // After a restart on such a day its size counts, or the sign would flip back.
        rain.rainatchange = rain.rainnow + (first ? std::fabs(rain.raintoday) : rain.raintoday);
    }
    rain.raintoday = rain.rainnow - rain.rainatchange;
    rain.rainbefore = rain.rainnow;
    remember_start_of_date(state);

    show_rain_of_the_day(state);
    if (sensor_sound(copy, Sensor::rain)) check_rain_amount(copy);
}

void rain_last_hour(Copy& copy) {
    WeatherState& state = copy.state;
    RainState& rain = state.rain;
    const float counter = rain_counter(state.readings);

    if (rain.LastHourIndex == 0) {
        rain.LastHourPrev = counter;
        rain.LastHourIndex = 1;
        rain.LastHourSum = 0;
        state.panel.TxtRainLH.text = "0 " + state.units.rain_text;
        return;
    }

    float before = rain.LastHourPrev.value_or(counter);
    if (counter < before) before = 0;
    rain.LastHourDelta = counter - before;
    rain.LastHourPrev = counter;
    rain.LastHourRing[static_cast<std::size_t>(rain.LastHourIndex)] = static_cast<int>(rain.LastHourDelta);
    if (++rain.LastHourIndex > RainState::LastHourLimit) rain.LastHourIndex = 1;

    rain.LastHourSum = 0;
    for (const int delta : rain.LastHourRing) rain.LastHourSum += static_cast<float>(delta);
    show_rain_last_hour(state);
}

void show_rain_last_hour(WeatherState& state) {
    if (state.rain.LastHourIndex == 0) return;
    const auto sum = static_cast<double>(state.rain.LastHourSum);
    state.panel.TxtRainLH.text =
        with_unit(state.units.rain == RainUnit::inches ? Round(sum * inches_per_mm, 2) : sum, state.units.rain_text);
}

std::string last_hour_tag(float mm) {
    return "r" + padded(static_cast<int>(Round(static_cast<double>(mm) * inches_per_mm * 100, 0)), 3);
}

void midnight_rain_file(Copy& copy) {
    WeatherState& state = copy.state;
    if (!state.readings.dtvar || state.readings.rdattime.substr(0, 5) != "00:00") {
        state.rain.midnight_written = false;
        return;
    }
    if (std::exchange(state.rain.midnight_written, true)) return;

    // Taken before the wait: another train may be decoded meanwhile.
    const std::string lines =
        stamp_text(*state.readings.dtvar) + "\r\n" + numtext(Val(state.readings.rdattotrain)) + "\r\n";
    wait_until_free(copy, midnight_file);
    // A date that goes on the line of a counter that a power cut has torn would not be found.
    Files& files = copy.ports.files;
    require(files.append(midnight_file, std::string(missing_line_end(files, midnight_file)) + lines));
}

float rain_since_midnight(Copy& copy) {
    const WeatherState& state = copy.state;
    RainState& rain = copy.state.rain;
    if (state.settings.tmidnight || !state.readings.dtvar) return rain.RainSinceMidnight = rain.raintoday;

    std::string contents;
    copy.ports.files.read(midnight_file, contents);
    if (const auto midnight = counter_at_midnight(contents, date_of(*state.readings.dtvar))) {
        const float since = rain.rainnow - *midnight;
        return rain.RainSinceMidnight = since < 0 ? rain.rainnow : since;
    }
    return rain.RainSinceMidnight = rain.date_start ? rain.rainnow - rain.date_start->counter : 0;
}

}  // namespace nimbry
