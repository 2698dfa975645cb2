#include "engine/publish/weather_query.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/core/version.h"
#include "engine/derived/dates.h"
#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/reports/tag_forms.h"
#include "engine/station/station_time.h"

namespace nimbry {
namespace {

constexpr int most_slots = 15;
constexpr int minutes_an_hour = 60;

constexpr WeatherService underground{"Weather Underground",
                                     "weatherstation.wunderground.com",
                                     "/weatherstation/updateweatherstation.php?action=updateraw&ID=",
                                     &InternetDialog::chkWU,
                                     &InternetDialog::WUuser,
                                     &InternetDialog::WUpass,
                                     &InternetDialog::WUhost,
                                     &MainMenu::mnuLogWU};
constexpr WeatherService for_you{"Weatherforyou",         "www.hamweather.net",    "/weatherstations/vwsupdate.php?ID=",
                                 &InternetDialog::chkHW,  &InternetDialog::HWuser, &InternetDialog::HWpass,
                                 &InternetDialog::HWhost, &MainMenu::mnuLogHW};

constexpr std::array services{&underground, &for_you};

std::string at_least_three(std::string text) {
    return text.size() < 3 ? text.insert(0, 3 - text.size(), '0') : text;
}

std::string wind(WeatherState& state) {
    Readings& readings = state.readings;
    if (!readings.HaveWind || state.sensors.pewgerr.failed) return "&windspeedmph=0&windgustmph=0";
    const double average = Val(readings.rawwindas);
    std::string items;
    if (average != 0) items += "&winddir=" + padded(readings.adirint, 3);
    items += "&windspeedmph=" + padded(static_cast<int>(average * mph_per_ms), 3);
    items += "&windgustmph=" + at_least_three(numtext(readings.MaxGustMph));
    readings.MaxGustMph = 0;
    return items;
}

std::string temperature(const WeatherState& state) {
    const std::string& celsius = state.readings.rawostemp;
    if (celsius.empty() || state.sensors.peoterr.failed) return "&tempf=";
    return "&tempf=" + numtext(ctof(metrictext(celsius)));
}

/// What fell in the last hour, mm; the interval that ends now goes into the ring.
int rain_of_the_hour(IntervalRain& ring, float total, int interval) {
    const int slots = std::clamp(minutes_an_hour / interval, 1, most_slots);
    if (ring.position > slots) ring.position = 1;
    ring.mm[static_cast<std::size_t>(ring.position)] = static_cast<int>(std::nearbyint(total - ring.total));
    ring.total = total;
    ++ring.position;
    if (ring.position > slots) ring.position = 1;
    int sum = 0;
    // Slots beyond are left from a shorter interval.
    for (int slot = 1; slot <= slots; ++slot) sum += ring.mm[static_cast<std::size_t>(slot)];
    return sum;
}

std::string rain(WeatherState& state) {
    PublishState& publish = state.publish;
    if (publish.FtpForced) return "&rainin=";
    IntervalRain& ring = publish.interval_rain;
    const float total = state.rain.rainnow;
    if (ring.position == 0) {
        ring.total = total;
        ring.position = 1;
        return "&rainin=0.00";
    }
    const int mm = rain_of_the_hour(ring, total, report_interval(publish.NimbryFTPSetup));
    return "&rainin=" + numtext(static_cast<float>(Round(mm * inches_per_mm, 2)));
}

std::string barometer(const WeatherState& state) {
    if (state.readings.BaroInvariant.empty() || state.sensors.pebarerr.failed) return "";
    return "&baromin=" + numtext(Round(state.readings.BaroValue * inhg_per_hpa, 2));
}

std::string moisture(const WeatherState& state) {
    const std::string percent = number_alone(state.panel.Text2[2].text);
    if (percent.empty() || state.sensors.peoherr.failed) return "";
    const std::string& dew = state.readings.DewInvariant;
    const std::string dew_item = dew.empty() ? "" : "&dewptf=" + numtext(ctof(dew));
    return dew_item + "&humidity=" + percent;
}

struct Address {
    std::string scheme, host_and_port;
};

Address address_of(const WeatherService& service, const InternetDialog& settings) {
    std::string host = trimmed(settings.*service.own_host);
    if (host.empty()) host = service.host;
    Address address{"http://", host};
    for (const char* scheme : {"http://", "https://"}) {
        if (lower_case(host).starts_with(scheme)) {
            address = {scheme, host.substr(std::string(scheme).size())};
        }
    }
    while (address.host_and_port.ends_with('/')) address.host_and_port.pop_back();
    return address;
}

}  // namespace

const WeatherService& weather_underground() {
    return underground;
}

const WeatherService& hamweather() {
    return for_you;
}

std::span<const WeatherService* const> services_by_query() {
    return services;
}

std::string weather_items(WeatherState& state, CivilTime utc) {
    return "&dateutc=" + utc_texts(utc).stamp + wind(state) + temperature(state) + rain(state) + barometer(state) +
           moisture(state) + "&weather=&clouds=&softwaretype=Nimbry " + std::string(program_version);
}

std::string weather_request(const WeatherService& service, const InternetDialog& settings, const std::string& items) {
    const Address address = address_of(service, settings);
    return address.scheme + address.host_and_port + service.path + settings.*service.user +
           "&PASSWORD=" + settings.*service.pass + items;
}

std::string host_of(const WeatherService& service, const InternetDialog& settings) {
    const std::string address = address_of(service, settings).host_and_port;
    if (address.starts_with('[')) return address.substr(1, address.find(']') - 1);
    return address.substr(0, address.find_first_of(":/"));
}

int report_interval(const InternetDialog& settings) {
    return std::max(whole_number(settings.txtWUMins), 1);
}

}  // namespace nimbry
