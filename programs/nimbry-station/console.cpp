#include "programs/nimbry-station/console.h"

#include <algorithm>
#include <cmath>

#include "programs/nimbry-station/weather.h"

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr auto past = 24h * 30;
constexpr auto longest_look_away = 10min;  // a shower or a ramp between two frames must not be missed
constexpr double wettest = 97;             // the sensor reads no more; above it sends this and "over range"

RecordMoment record_moment(CivilTime time) {
    const StationReadings::Moment at = station_moment(time);
    return {at.hour, at.minute, at.day, at.month};
}

int whole(double value) {
    return static_cast<int>(std::lround(value));
}

/// A direction of the weather as whole degrees, 0 to 359: what rounds up to 360 is north.
double whole_degrees(double degrees) {
    return std::fmod(std::round(degrees), 360.0);
}

}  // namespace

double Console::Hold::at(CivilTime moment) const {
    if (moment >= begin + over) return to;
    const double part = std::chrono::duration<double>(moment - begin) / std::chrono::duration<double>(over);
    return from + (to - from) * part;
}

Console::Console(std::uint64_t seed, CivilTime start) : seed_(seed), moment_(start - past) {
    measure();
    live_to(start);
}

void Console::live_to(CivilTime moment) {
    while (moment_ + longest_look_away < moment) {
        moment_ += longest_look_away;
        measure();
    }
    moment_ = moment;
    measure();
}

void Console::measure() {
    const Weather weather = weather_at(seed_, moment_);
    air_saturated_ = weather.outdoor_rh > wettest;
    values_[Reading::outdoor_temperature] = weather.outdoor_c;
    values_[Reading::outdoor_humidity] = std::min(wettest, weather.outdoor_rh);
    values_[Reading::indoor_temperature] = weather.indoor_c;
    values_[Reading::indoor_humidity] = weather.indoor_rh;
    values_[Reading::barometer] = weather.pressure_hpa;
    values_[Reading::rain_rate] = weather.rain_mm_h;
    values_[Reading::gust] = weather.gust_ms;
    values_[Reading::gust_direction] = whole_degrees(weather.gust_degrees);
    values_[Reading::wind] = weather.average_ms;
    values_[Reading::wind_direction] = whole_degrees(weather.average_degrees);
    hold_on();  // what is held counts for the records too
    memory_.live(values_, moment_, clock());
    if (held(Reading::rain_total)) memory_.set_rain_total(held(Reading::rain_total)->at(moment_));
    memory_.recall(values_);
    hold_on();
}

void Console::hold_on() {
    for (std::size_t n = 0; n < holds_.size(); ++n) {
        if (holds_[n]) values_[static_cast<Reading>(n)] = holds_[n]->at(moment_);
    }
}

void Console::apply(const HoldReading& hold) {
    held(hold.reading) = Hold{values_[hold.reading], hold.value, moment_, hold.over};
    measure();
}

void Console::apply(const ReleaseReading& release) {
    if (release.reading) {
        held(*release.reading).reset();
    } else {
        holds_.fill(std::nullopt);
    }
    measure();
}

void Console::apply(const EndFault& end) {
    if (end.fault) {
        faults_[static_cast<std::size_t>(*end.fault)] = false;
    } else {
        faults_.fill(false);
    }
}

void Console::apply(const ResetRain&) {
    memory_.reset_rain(clock());
    measure();
}

void Console::apply(const ResetRecords&) {
    memory_.reset_records(values_, clock());
    measure();
}

StationReadings Console::readings() const {
    const bool held_humidity = holds_[static_cast<std::size_t>(Reading::outdoor_humidity)].has_value();
    const auto value = [&](Reading reading) { return values_[reading]; };
    StationReadings r;
    r.clock = station_moment(clock());
    r.humidity = {.indoor = whole(value(Reading::indoor_humidity)),
                  .outdoor = whole(value(Reading::outdoor_humidity)),
                  .indoor_fault = faulty(Fault::indoor_humidity),
                  .outdoor_fault = faulty(Fault::outdoor_humidity),
                  .outdoor_over_range = faulty(Fault::humidity_over_range) || (air_saturated_ && !held_humidity),
                  .high = whole(value(Reading::high_humidity)),
                  .low = whole(value(Reading::low_humidity)),
                  .high_over_range = faulty(Fault::record_over_range),
                  .high_at = record_moment(memory_.high_humidity().made),
                  .low_at = record_moment(memory_.low_humidity().made)};
    r.temperature = {.indoor = value(Reading::indoor_temperature),
                     .outdoor = value(Reading::outdoor_temperature),
                     .indoor_fault = faulty(Fault::indoor_temperature),
                     .outdoor_fault = faulty(Fault::outdoor_temperature),
                     .high = value(Reading::high_temperature),
                     .low = value(Reading::low_temperature),
                     .high_at = record_moment(memory_.high_temperature().made),
                     .low_at = record_moment(memory_.low_temperature().made)};
    r.barometer = {.hpa = faulty(Fault::barometer) ? 0 : whole(value(Reading::barometer)),
                   .trend = whole(value(Reading::trend)),
                   .outlook = whole(value(Reading::outlook))};
    r.rain = {.rate_mm = whole(value(Reading::rain_rate)),
              .total_mm = static_cast<int>(value(Reading::rain_total)),
              .reset_at = record_moment(memory_.rain_reset()),
              .fault = faulty(Fault::rain)};
    r.wind = {.gust_ms = value(Reading::gust),
              .average_ms = value(Reading::wind),
              .gust_direction = whole(value(Reading::gust_direction)),
              .average_direction = whole(value(Reading::wind_direction)),
              .record_ms = value(Reading::record_gust),
              .record_direction = whole(value(Reading::record_direction)),
              .record_at = record_moment(memory_.gust().made),
              .chill_c = value(Reading::wind_chill),
              .low_battery = faulty(Fault::low_battery),
              .fault_bits = faulty(Fault::wind) ? 8 : 0};
    return r;
}

Bytes Console::sealed(Bytes frame) const {
    for (const SetDigit& digit : digits_) set_digit(frame, digit.tag, digit.place, digit.value);
    seal(frame);
    return frame;
}

}  // namespace nimbry::simulator
