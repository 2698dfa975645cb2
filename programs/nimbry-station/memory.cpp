#include "programs/nimbry-station/memory.h"

#include <cmath>

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr double counter_end_mm = 10000;  // four digits: 9999 is followed by 0
constexpr auto glass_spacing = 10min;
constexpr auto glass_span = 3h;

}  // namespace

double station_chill_c(double temp_c, double wind_ms) {
    if (wind_ms < 1.8 || temp_c > 33) return temp_c;
    const double kmh = wind_ms * 3.6;
    return 0.045 * (5.2735 * std::sqrt(kmh) + 10.45 - 0.2778 * kmh) * (temp_c - 33) + 33;
}

int trend_digit(double change_hpa) {
    if (change_hpa >= 1) return 1;
    return change_hpa <= -1 ? 4 : 2;
}

int outlook_digit(double hpa, double change_hpa) {
    const double outlook = (hpa - 1010) / 8 + change_hpa;
    if (outlook < -1.5) return 8;
    if (outlook < 0) return 2;
    return outlook < 1 ? 4 : 1;
}

void Memory::live(const Values& values, CivilTime moment, CivilTime clock) {
    if (!begun_) {
        begun_ = true;
        last_ = moment;
        reset_rain(clock);
        reset_records(values, clock);
    }
    const double hours = std::chrono::duration<double, std::ratio<3600>>(moment - last_).count();
    rain_mm_ = std::fmod(rain_mm_ + values[Reading::rain_rate] * hours, counter_end_mm);
    last_ = moment;

    const double temperature = values[Reading::outdoor_temperature], humidity = values[Reading::outdoor_humidity];
    if (temperature > high_temperature_.value) high_temperature_ = {temperature, 0, clock};
    if (temperature < low_temperature_.value) low_temperature_ = {temperature, 0, clock};
    if (humidity > high_humidity_.value) high_humidity_ = {humidity, 0, clock};
    if (humidity < low_humidity_.value) low_humidity_ = {humidity, 0, clock};
    if (values[Reading::gust] > gust_.value) gust_ = {values[Reading::gust], values[Reading::gust_direction], clock};

    hpa_ = values[Reading::barometer];
    if (glass_.empty() || moment - glass_.back().read >= glass_spacing) glass_.push_back({moment, hpa_});
    while (moment - glass_.front().read > glass_span) glass_.pop_front();
    chill_ = station_chill_c(temperature, values[Reading::wind]);
}

void Memory::recall(Values& values) const {
    const double change = glass_.empty() ? 0 : hpa_ - glass_.front().hpa;
    values[Reading::trend] = trend_digit(change);
    values[Reading::outlook] = outlook_digit(hpa_, change);
    values[Reading::rain_total] = std::floor(rain_mm_);
    values[Reading::wind_chill] = chill_;
    values[Reading::high_temperature] = high_temperature_.value;
    values[Reading::low_temperature] = low_temperature_.value;
    values[Reading::high_humidity] = high_humidity_.value;
    values[Reading::low_humidity] = low_humidity_.value;
    values[Reading::record_gust] = gust_.value;
    values[Reading::record_direction] = gust_.direction;
}

void Memory::reset_rain(CivilTime clock) {
    rain_mm_ = 0;
    rain_reset_ = clock;
}

void Memory::reset_records(const Values& values, CivilTime clock) {
    high_temperature_ = low_temperature_ = {values[Reading::outdoor_temperature], 0, clock};
    high_humidity_ = low_humidity_ = {values[Reading::outdoor_humidity], 0, clock};
    gust_ = {values[Reading::gust], values[Reading::gust_direction], clock};
}

}  // namespace nimbry::simulator
