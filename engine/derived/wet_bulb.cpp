#include "engine/derived/wet_bulb.h"

#include "engine/derived/number_text.h"

namespace nimbry {

float wet_bulb(double temperature, double dew_point, double vapour_pressure, double pressure) {
    const double gamma = 0.00066 * pressure;
    const double above_zero = dew_point + 237.7;
    const double delta = 4098 * vapour_pressure / (above_zero * above_zero);
    return static_cast<float>((gamma * temperature + delta * dew_point) / (gamma + delta));
}

double wet_bulb_depression(double temperature, float wet_bulb) {
    return Round(temperature - Round(static_cast<double>(wet_bulb), 1), 1);
}

}  // namespace nimbry
