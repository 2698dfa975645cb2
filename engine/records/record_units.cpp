#include "engine/records/record_units.h"

#include <cmath>

#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"

namespace nimbry {

double scaled(float value, double factor, int digits) {
    return Round(static_cast<double>(value) * factor, digits);
}

std::string signed_temperature(float celsius, const Units& units) {
    // A single is printed as a single: widened, 12.3 would show digits that nobody measured.
    const float shown =
        units.temperature == TemperatureUnit::celsius ? celsius : roundnst(static_cast<double>(celsius));
    return sign_of(static_cast<double>(shown)) + numtext(std::fabs(shown));
}

}  // namespace nimbry
