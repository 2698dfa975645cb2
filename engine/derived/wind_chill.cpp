#include "engine/derived/wind_chill.h"

#include <algorithm>
#include <cmath>

namespace nimbry {

double wind_chill(double temperature, double wind_kmh) {
    const double power = std::pow(wind_kmh, 0.16);
    const double chill = 13.12 + 0.6215 * temperature - 11.37 * power + 0.3965 * temperature * power;
    return std::min(chill, temperature);
}

}  // namespace nimbry
