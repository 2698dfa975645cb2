#pragma once

#include <string>

#include "engine/core/main_settings.h"

namespace nimbry {

enum class TemperatureUnit { celsius, fahrenheit };
enum class WindUnit { ms, kph, mph, knots };
enum class BarometerUnit { mb, hpa, inhg };
enum class RainUnit { mm, inches };

/// The units that displays, logs and pages use. State itself stays metric; only display goes through these.
struct Units {
    TemperatureUnit temperature = TemperatureUnit::celsius;
    WindUnit wind = WindUnit::kph;
    BarometerUnit barometer = BarometerUnit::mb;
    RainUnit rain = RainUnit::mm;

    double wcorr = 3.6;  ///< metres per second to the wind unit
    double bcorr = 1.0;  ///< hectopascals to the barometer unit
    double rcorr = 1.0;  ///< millimetres to the rain unit

    std::string temperature_text = " \xB0" "C";  ///< carries its own leading blank; the others are joined by one
    std::string wind_text = "km/h";
    std::string barometer_text = "mB";
    std::string rain_text = "mm";
};

/// The factors and texts for the unit keys in force.
[[nodiscard]] Units units_from(const MainSettings& settings);

}  // namespace nimbry
