#pragma once

namespace nimbry {

/// Below this outdoor temperature, degrees C, there is no heat index.
inline constexpr double heat_index_from = 20;

/// The heat index of both units, one decimal each. The Celsius value is made from the rounded Fahrenheit one, so
/// turning it back may differ in the last decimal: that is wanted, the two are shown as they are here.
struct HeatIndex {
    double fahrenheit = 0;
    double celsius = 0;
};

/// Heat index of air at `temperature` (degrees C, heat_index_from or more) and `humidity` (percent as read: a 97 that
/// stands for 100 counts as 97): the sixteen-term polynomial in degrees F, summed from left to right. Constants as
/// given: do not improve. It is a fit, so outside the weather it was made from its results are no weather (dry air at
/// 20 degrees gives less than 20).
///
///   heat_index(20, 50) = 75.8 F, 24.3 C    heat_index(30, 97) = 108 F, 42.2 C    heat_index(20, 1) = 61.5 F, 16.4 C
[[nodiscard]] HeatIndex heat_index(double temperature, double humidity);

}  // namespace nimbry
