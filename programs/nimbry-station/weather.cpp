#include "programs/nimbry-station/weather.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "programs/nimbry-station/noise.h"

namespace nimbry::simulator {
namespace {

constexpr double minute = 60, hour = 3600, day = 86400, year = 365.2425 * day;

/// One name for each random curve: a curve added later must not change the others.
enum Channel : std::uint64_t {
    pressure_wave = 1,
    pressure_trough,
    pressure_ripple,
    air_mass,
    air_mass_short,
    warmth_flutter,
    moisture,
    cloud_drift,
    front_drift,
    shower,
    shower_core,
    wind_base,
    wind_lull,
    wind_turn,
    wind_turn_short,
    wind_flutter,
    gust_strength,
    gust_turn,
    rooms_warmth,
    rooms_moisture,
};

/// The curves of one seed at one moment.
struct Chance {
    std::uint64_t seed;
    double t;
    double operator()(Channel channel, double period) const { return smooth_noise(seed, channel, t, period); }
};

/// 1 at the hour named, -1 twelve hours (or half a `length`) from it.
double swing(double t, double peak, double length) {
    return std::cos(2 * std::numbers::pi * (t - peak) / length);
}

/// 0 below `low`, 1 above `high`, a smooth rise between.
double rise(double value, double low, double high) {
    const double f = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return f * f * (3 - 2 * f);
}

double pressure(const Chance& chance) {
    const double wave = 13 * chance(pressure_wave, 4.3 * day) + 6 * chance(pressure_trough, 1.4 * day);
    // Lows are deeper than highs are high.
    const double lopsided = wave < 0 ? wave * 1.6 : wave;
    const double tide = 0.5 * swing(chance.t, 10 * hour, day / 2);
    return 1015 + lopsided + 1.2 * chance(pressure_ripple, 7 * hour) + tide;
}

/// Saturation vapour pressure over water, hPa, of -40 to 50 degrees C (Magnus form, constants of Alduchov and
/// Eskridge).
///   saturation_hpa(0) = 6.11   saturation_hpa(20) = 23.3   saturation_hpa(-10) = 2.86
double saturation_hpa(double celsius) {
    return 6.1094 * std::exp(17.625 * celsius / (celsius + 243.04));
}

double compass(double degrees) {
    const double turned = std::fmod(degrees, 360.0);
    return turned < 0 ? turned + 360 : turned;
}

}  // namespace

Weather weather_at(std::uint64_t seed, CivilTime moment) {
    const double t = static_cast<double>(moment.time_since_epoch().count());
    const Chance chance{seed, t};
    const double summer = swing(t, 199 * day, year);  // warmest in the middle of July, of every year
    const double daylight = rise(swing(t, 12.5 * hour, day) + 0.35 * summer, -0.3, 0.9);

    Weather w;
    w.pressure_hpa = pressure(chance);
    w.pressure_change_hpa = w.pressure_hpa - pressure({seed, t - 3 * hour});
    // 0 in settled weather, above 1 where a front passes.
    const double front =
        rise((1013 - w.pressure_hpa) / 12 - w.pressure_change_hpa / 3 + 0.8 * chance(front_drift, 9 * hour), -0.2, 3);
    w.cloud = rise((1016 - w.pressure_hpa) / 20 + 0.9 * chance(cloud_drift, 5 * hour) + 1.2 * front, -0.8, 1.2);

    const double wet = front * 1.5 + 0.5 * chance(shower, 70 * minute) + 0.35 * chance(shower_core, 14 * minute) - 0.75;
    w.rain_mm_h = wet > 0 ? (4 + 9 * daylight * std::max(0.0, summer)) * std::pow(wet, 1.6) : 0;

    const double air = 4.5 * chance(air_mass, 6 * day) + 1.5 * chance(air_mass_short, 30 * hour);
    const double season = 10.5 + 8 * summer + air;
    const double day_swing = (3 + 2 * summer) * (1 - 0.7 * w.cloud);
    w.outdoor_c = season + day_swing * swing(t, 14.5 * hour, day) + 0.3 * chance(warmth_flutter, 20 * minute) -
                  1.8 * std::min(1.0, w.rain_mm_h / 5);
    const double dry_gap = 5.5 - 3.5 * front - 2.5 * w.cloud - std::min(1.5, w.rain_mm_h);
    w.dew_point_c = std::min(w.outdoor_c, season - dry_gap + 2.5 * chance(moisture, 18 * hour));
    w.outdoor_rh = std::clamp(100 * saturation_hpa(w.dew_point_c) / saturation_hpa(w.outdoor_c), 15.0, 100.0);

    const double breeze = 1.0 + 2.2 * chance(wind_base, 14 * hour) + 1.6 * daylight * (1 - 0.6 * w.cloud);
    const double blow = std::max(0.0, breeze + 1.0 * std::abs(w.pressure_change_hpa) + 4 * front);
    w.average_ms = std::min(30.0, blow * (1 + 0.25 * chance(wind_lull, 9 * minute)));
    const double strength = 0.5 + 0.5 * chance(gust_strength, 13);
    w.gust_ms = std::min(50.0, w.average_ms * (1.05 + (0.55 + 0.3 * front) * strength * strength));
    const double bearing = 225 + 120 * chance(wind_turn, 2.5 * day) + 60 * chance(wind_turn_short, 16 * hour);
    w.average_degrees = compass(bearing + 12 * chance(wind_flutter, 8 * minute));
    w.gust_degrees = compass(bearing + 12 * chance(wind_flutter, 8 * minute) + 20 * chance(gust_turn, 40));

    w.indoor_c = 20.8 + 1.8 * summer + 0.9 * swing(t, 20 * hour, day) + 0.5 * chance(rooms_warmth, 5 * hour);
    w.indoor_rh = 45 + 8 * summer + 6 * chance(rooms_moisture, day) + 2 * swing(t, 8 * hour, day);
    return w;
}

}  // namespace nimbry::simulator
