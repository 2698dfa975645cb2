#pragma once

#include <string>

#include "engine/core/main_settings.h"

namespace nimbry {

enum class TemperatureUnit { celsius, fahrenheit };
enum class WindUnit { ms, kph, mph, knots };
enum class BarometerUnit { mb, hpa, inhg };
enum class RainUnit { mm, inches };

/// Calm is what rounds to less than this in the unit of display.
inline constexpr double calm_below = 0.2;

/// The unit text of a temperature: a blank, the degree sign, 'C' or 'F'.
[[nodiscard]] inline std::string degrees(char letter) {
    return std::string(" \xB0") + letter;
}

/// The units that displays, logs and pages use. State itself stays metric; only display goes through these.
struct Units {
    TemperatureUnit temperature = TemperatureUnit::celsius;
    WindUnit wind = WindUnit::kph;
    BarometerUnit barometer = BarometerUnit::mb;
    RainUnit rain = RainUnit::mm;

    double wcorr = 3.6;  ///< metres per second to the wind unit
    double bcorr = 1.0;  ///< hectopascals to the barometer unit
    double rcorr = 1.0;  ///< millimetres to the rain unit

    std::string temperature_text = degrees('C');  ///< carries its own leading blank; the others are joined by one
    std::string wind_text = "km/h";
    std::string barometer_text = "mB";
    std::string rain_text = "mm";
};

/// The factors and texts for the unit keys in force. Keys that contradict each other (a file that sets only `fTempF`
/// still has `fTempC` by default) are settled for each quantity: a true key whose default is false wins over the
/// default unit; of several such the last in the order of the keys: inHg over hPa, m/s over mph over knots. None true:
/// the default unit.
[[nodiscard]] Units units_from(const MainSettings& settings);

/// Sets the unit keys so that exactly one of each quantity is true. Nothing is written to the file.
void keep_units(MainSettings& settings, const Units& units);

}  // namespace nimbry
