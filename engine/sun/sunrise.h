#pragma once

#include <chrono>
#include <optional>

#include "engine/ports/clock.h"

namespace nimbry {

/// Works out sunrise, sunset and solar noon of one day at one place: the low-accuracy formula set of the National
/// Oceanic and Atmospheric Administration's solar calculator (fractional year, equation of time, declination, hour
/// angle), with constants of its own. Good to a few minutes below the polar circles; no tables, no state but the
/// properties and results.
///
/// Set the properties, call CalculateSun(), read the results. Near the poles, where the sun does not rise or set, the
/// hour angle is 0 and the results fall together at (or within seconds of) solar noon; no test tells that case apart.
class clsSunrise {
public:
    double Latitude = 0;                ///< degrees, north positive
    double Longitude = 0;               ///< degrees, WEST positive: the opposite of what the configuration stores
    double TimeZone = 0;                ///< hours; local time is UTC minus this
    bool DaySavings = false;            ///< adds one hour to the results; never here (sun_texts.cpp)
    bool twilight = false;              ///< civil twilight (zenith 96 degrees) instead of sunrise and sunset (90.833)
    std::chrono::local_days DateDay{};  ///< the day to work out

    /// Works out all results for the properties as they are. A latitude from -90 to below -89.8 counts as -89.8, one
    /// above 89.8 up to 90 as 89.8; one beyond +-90 works out nothing, and the results stay as they were; so does a
    /// longitude of more than a million, which is no angle any more.
    void CalculateSun();

    /// Local times by TimeZone and DaySavings, to the second; they may lie on the day before or after DateDay. Nothing
    /// before the first calculation.
    [[nodiscard]] std::optional<CivilTime> Sunrise() const { return sunrise_; }
    [[nodiscard]] std::optional<CivilTime> Sunset() const { return sunset_; }
    [[nodiscard]] std::optional<CivilTime> SolarNoon() const { return solar_noon_; }

    /// Hours between the two events, from the hour angle of the first: 2 * |H| / 15. With `twilight` the length of
    /// visible light.
    [[nodiscard]] double daylength() const { return daylength_; }

private:
    std::optional<CivilTime> sunrise_, sunset_, solar_noon_;
    double daylength_ = 0;
};

// The steps, pure. Angles are radians unless a name says degrees.

/// Day of the year, 1 to 366.
[[nodiscard]] int day_of_year(std::chrono::local_days day);

/// Fractional year of day d (1 to 366) at a whole hour h, which may lie outside 0 to 24. A leap year divides by 365
/// too.
[[nodiscard]] double fractionalyear(int d);
[[nodiscard]] double fractionalyear(int d, int h);

/// Minutes by which the sundial is ahead of the clock.
[[nodiscard]] double equationoftime(double gamma);

/// Declination of the sun.
[[nodiscard]] double declination(double gamma);

/// The angle whose cosine is x, by the arctangent; 0 where |x| is not below 1, also at -1.
[[nodiscard]] double arccos(double x);

/// Hour angle of the event in degrees, positive for the rise, negative for the set; 0 where the sun does not reach the
/// zenith angle.
[[nodiscard]] double hourangle_degrees(double latitude, double sun_declination, bool isrise, bool twilight);

}  // namespace nimbry
