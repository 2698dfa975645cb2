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

/// The sixteen-term polynomial, degrees F, not rounded, of `temperature` in degrees F and `humidity` in percent, summed
/// from left to right. A fit to Steadman's table of apparent temperatures (1979), as printed in Stull's Meteorology for
/// Scientists and Engineers. Constants as given: do not improve. Outside the weather it was made from its results are
/// no weather (dry air at 68 degrees gives less than 68).
///   heat_index_sum(68, 50) = 75.75827358   heat_index_sum(86, 97) = 107.98044445   heat_index_sum(68, 1) = 61.50999849
[[nodiscard]] double heat_index_sum(double temperature, double humidity);

/// Heat index of air at `temperature` (degrees C, heat_index_from or more) and `humidity` (percent as read: a 97 that
/// stands for 100 counts as 97).
///   heat_index(20, 50) = 75.8 F, 24.3 C   heat_index(30, 97) = 108 F, 42.2 C   heat_index(20, 1) = 61.5 F, 16.4 C
[[nodiscard]] HeatIndex heat_index(double temperature, double humidity);

}  // namespace nimbry
