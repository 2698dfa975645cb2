#pragma once

namespace nimbry {

/// Wind chill, degrees C, not rounded: the North American formula of 2001, never above the air's own temperature. Used
/// at every temperature and wind, also outside the range that it was made for. Constants as given: do not improve.
///
/// `temperature` in degrees C, `wind_kmh` the average wind in km/h, 0 or more. In calm air the power is 0 and the
/// formula gives 13.12 + 0.6215 T, which the cap turns into T itself at every temperature below 34.66.
///
///   wind_chill(8.1, 12.24) = 5.974    wind_chill(-10, 30) = -19.520    wind_chill(12.3, 0.36) = 12.3 (capped)
[[nodiscard]] double wind_chill(double temperature, double wind_kmh);

}  // namespace nimbry
