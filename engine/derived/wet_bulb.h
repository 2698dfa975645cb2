#pragma once

namespace nimbry {

/// Wet-bulb temperature, degrees C, not rounded, by the balance between a psychrometer's constant and the slope of the
/// saturation curve at the dew point (a one-step estimate, not an iteration). Constants as given: do not improve.
///
/// `temperature` and `dew_point` in degrees C (the dew point rounded to one decimal, as the panel has it),
/// `vapour_pressure` in hPa, above 0 and not rounded (DewPoint::vapour_pressure), `pressure` in hPa, 0 or more.
///
///   wet_bulb(20, 9.3, 11.670337, 1013) = 14.22523    wet_bulb(-10, -12.8, 2.289552, 1013) = -10.60814
///   wet_bulb(30, 30, 42.318893, 1013) = 30
[[nodiscard]] float wet_bulb(double temperature, double dew_point, double vapour_pressure, double pressure);

/// How far the wet bulb stands below the air, in kelvin, one decimal: both the wet bulb and the difference are rounded.
///
///   wet_bulb_depression(20, 14.22523F) = 5.8    wet_bulb_depression(8.1, 4.719F) = 3.4
///   wet_bulb_depression(30, 30) = 0
[[nodiscard]] double wet_bulb_depression(double temperature, float wet_bulb);

}  // namespace nimbry
