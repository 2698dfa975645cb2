#include "engine/station/humidity.h"

#include "engine/station/digits.h"

namespace nimbry {

bool humidity_over_range(const WeatherState& state) {
    return state.readings.rdathumidity == "97" && flag_set(state.comm.Digits8F, digits_8f::outdoor_over_range);
}

std::string outdoor_humidity_text(const WeatherState& state) {
    return humidity_over_range(state) ? "100" : state.readings.rdathumidity;
}

}  // namespace nimbry
