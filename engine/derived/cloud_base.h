#pragma once

namespace nimbry {

/// Height of the base of convective cloud above the station.
struct CloudBase {
    int metres = 0;
    int feet = 0;
};

/// The height at which rising air has cooled to its dew point: 125 m for each degree C between them (Espy's rule:
/// rising air cools by 9.8 degrees a kilometre, its dew point by 1.8). Feet are 3.28 times the metres before these are
/// cut; both are cut to their whole part, toward zero, never rounded. Constants as given.
///
/// `temperature` and `dew_point` in degrees C, one decimal each. A dew point above the temperature (a humidity read as
/// 100 and a rounding) gives a negative height.
///
///   cloud_base(20, 9.3) = 1337 m, 4387 ft    cloud_base(8.1, -0.6) = 1087 m, 3567 ft    cloud_base(30, 30) = 0 m, 0 ft
[[nodiscard]] CloudBase cloud_base(double temperature, double dew_point);

}  // namespace nimbry
