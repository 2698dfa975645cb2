#include "engine/records/extremes_texts.h"

#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/records/record_units.h"

namespace nimbry {
namespace {

const std::string no_valid_data = "- No Valid Data -";
std::string at(const std::string& time) {
    return " at " + time;
}

}  // namespace

std::string temperature_record(float celsius, float reset, const std::string& time, const Units& units) {
    if (celsius == reset) return no_valid_data;
    return signed_temperature(celsius, units) + units.temperature_text + at(time);
}

std::string humidity_record(float percent, float reset, const std::string& time) {
    if (percent == reset) return no_valid_data;
    return numtext(percent) + " %" + at(time);
}

std::string rain_rate_record(float mm_per_hour, const std::string& time, const Units& units) {
    if (mm_per_hour == DayExtremes{}.maxrain) return no_valid_data;
    const double rate = scaled(mm_per_hour, units.rcorr, 2);
    if (rate == 0) return " nil";
    return with_unit(rate, units.rain_text) + "/hour" + at(time);
}

std::string barometer_record(float hpa, float reset, const std::string& time, const Units& units) {
    if (hpa == reset) return no_valid_data;
    return with_unit(scaled(hpa, units.bcorr, 2), units.barometer_text) + at(time);
}

std::string gust_record(float ms, const std::string& direction, const std::string& time, const Units& units) {
    if (ms == DayExtremes{}.maxwind) return no_valid_data;
    const double speed = scaled(ms, units.wcorr, 1);
    if (speed < calm_below) return "Calm";
    return with_unit(speed, units.wind_text) + ", " + direction + at(time);
}

}  // namespace nimbry
