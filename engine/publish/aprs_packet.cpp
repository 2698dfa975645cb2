#include "engine/publish/aprs_packet.h"

#include <algorithm>
#include <cmath>

#include "engine/derived/dates.h"
#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/records/rain.h"
#include "engine/reports/tag_forms.h"
#include "engine/sun/location.h"

namespace nimbry {
namespace {

std::string wind(const WeatherState& state) {
    const Readings& readings = state.readings;
    std::string text = padded(readings.adirint, 3) + "/";
    if (!readings.HaveWind || state.sensors.pewgerr.failed) return text + "...g...";
    const auto whole_mph = [](const std::string& ms) { return padded(static_cast<int>(Val(ms) * mph_per_ms), 3); };
    return text + whole_mph(readings.rawwindas) + "g" + whole_mph(readings.rawwindgs);
}

std::string temperature(const WeatherState& state) {
    if (state.readings.rawostemp.empty() || state.sensors.peoterr.failed) return "";
    const int fahrenheit = static_cast<int>(std::floor(ctof(metrictext(state.readings.rawostemp))));
    if (fahrenheit >= 0) return "t" + padded(fahrenheit, 3);
    const std::string digits = numtext(-fahrenheit);
    return "t-" + digits.substr(digits.size() - std::min<std::size_t>(digits.size(), 2));
}

std::string midnight_rain(const WeatherState& state) {
    const double hundredths = Round(static_cast<double>(state.rain.RainSinceMidnight) * inches_per_mm * 100, 0);
    return "P" + padded(static_cast<int>(std::max(hundredths, 0.0)), 3).substr(0, 3);
}

std::string barometer(const WeatherState& state) {
    if (state.readings.BaroInvariant.empty() || state.sensors.pebarerr.failed) return "";
    return "b" + padded(static_cast<int>(state.readings.BaroValue), 4) + "0";
}

std::string humidity(const WeatherState& state) {
    const std::string percent = number_alone(state.panel.Text2[2].text);
    return percent.empty() ? "" : "h" + padded(whole_number(percent), 2);
}

// Degrees and minutes with two decimals, "3351.41".
std::string position(double degrees, int width) {
    const double size = std::min(std::fabs(degrees), 999.0);
    const double whole = std::floor(size);
    const int hundredths = static_cast<int>(Round((size - whole) * 60 * 100, 0));
    return padded(static_cast<int>(whole), width) + padded(hundredths / 100, 2) + "." + padded(hundredths % 100, 2);
}

std::string time_of_day(const std::string& utc) {
    return utc.size() < 8 ? "" : utc.substr(0, 2) + utc.substr(3, 2) + utc.substr(6, 2) + "z";
}

}  // namespace

std::string weather_string(const WeatherState& state) {
    return wind(state) + temperature(state) + last_hour_tag(state.rain.LastHourSum) + midnight_rain(state) +
           barometer(state) + humidity(state) + "NBY";
}

std::string aprs_packet(const WeatherState& state) {
    const PublishState& publish = state.publish;
    const std::string call = trimmed(publish.NimbryFTPSetup.txtAPRSID);
    return call + ">APRS,TCPXX*,qAX," + call + ":@" + time_of_day(state.readings.utc.time) + publish.aprs_latitude +
           "/" + publish.aprs_longitude + "_" + weather_string(state);
}

void aprsposition(WeatherState& state) {
    PublishState& publish = state.publish;
    publish.aprs_latitude.clear();
    publish.aprs_longitude.clear();
    const auto place = entered_location(state.settings.Latitude, state.settings.Longitude);
    if (!place) return;
    publish.aprs_latitude = position(place->latitude, 2) + (place->latitude < 0 ? "S" : "N");
    publish.aprs_longitude = position(place->longitude, 3) + (place->longitude < 0 ? "W" : "E");
}

}  // namespace nimbry
