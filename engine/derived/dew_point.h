#pragma once

namespace nimbry {

/// What dew_point() works out. Nothing is rounded.
struct DewPoint {
    double celsius = 0;          ///< dew point, degrees C
    double vapour_pressure = 0;  ///< of the air's moisture, hPa: `Evap`
};

/// Dew point of air at `temperature` (degrees C, above -237.7) and `humidity` (percent, above 0). Magnus form with
/// the factors 6.11 hPa, 7.5 and 237.7 degrees, solved for the temperature at which the vapour saturates. Constants as
/// given: do not improve.
///
///   dew_point(20, 50).celsius = 9.2535    dew_point(-10, 80).celsius = -12.7835    dew_point(30, 97).celsius = 29.4680
///
/// Humidity 0 has no logarithm: RunTimeError invalid_argument, and the same for any result that is no number.
[[nodiscard]] DewPoint dew_point(double temperature, double humidity);

}  // namespace nimbry
