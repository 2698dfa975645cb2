#include "engine/derived/dew_point.h"

#include <cmath>

#include "engine/core/run_time_error.h"

namespace nimbry {

DewPoint dew_point(double temperature, double humidity) {
    const double saturated = 6.11 * std::pow(10.0, 7.5 * temperature / (237.7 + temperature));
    const double vapour_pressure = humidity * saturated / 100;
    // C++ answers the logarithm of 0 with an infinity and goes on; a weather record must not.
    if (!(vapour_pressure > 0)) throw RunTimeError{ErrorNumber::invalid_argument};
    const double logarithm = std::log(vapour_pressure);
    const double celsius = (237.7 * logarithm - 430.22) / (19.08 - logarithm);
    if (!std::isfinite(celsius)) throw RunTimeError{ErrorNumber::invalid_argument};
    return {celsius, vapour_pressure};
}

}  // namespace nimbry
