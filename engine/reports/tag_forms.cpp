#include "engine/reports/tag_forms.h"

#include <cmath>

#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"

namespace nimbry {
namespace {

constexpr float highest_calm = 0.2F;

double factor_of(SpeedUnit unit) {
    switch (unit) {
        case SpeedUnit::ms: return 1;
        case SpeedUnit::kmh: return kmh_per_ms;
        case SpeedUnit::mph: return mph_per_ms;
        case SpeedUnit::knots: break;
    }
    return knots_per_ms;
}

}  // namespace

float ctof(std::string_view celsius) {
    return roundnst(celsius);
}

std::string fsign(std::string_view value) {
    if (!IsNumeric(value)) return "";
    return {sign_of(Val(repcomma(std::string(value))))};
}

std::string fahrenheit(std::string_view metric) {
    const float value = ctof(metric);
    return fsign(numtext(value)) + numtext(std::fabs(value));
}

std::string fahrenheit_double_sign(std::string_view metric) {
    const std::string value = numtext(ctof(metric));
    return fsign(value) + value;
}

std::string metrictext(std::string_view raw) {
    if (raw.empty()) return "";
    // The sign is the text's own: the station can say "-00.0".
    return (raw.front() == '-' ? "-" : "+") + numtext(std::fabs(Val(raw)));
}

std::string number_alone(std::string_view with_unit) {
    const std::string text = trimmed(with_unit);
    return text == "Error" ? "" : text.substr(0, text.find(' '));
}

std::string speed_alone(std::string_view with_unit) {
    const std::string number = number_alone(with_unit);
    return number == "Calm" ? "0" : number;
}

std::string inches_of_rain(double mm) {
    return numtext(Round(mm * inches_per_mm, 2));
}

std::string inches_of_mercury(double hpa) {
    return numtext(Round(hpa * inhg_per_hpa, 2));
}

double converted(double ms, SpeedUnit unit) {
    return Round(ms * factor_of(unit), 1);
}

std::string speed_or(std::string_view calm_word, double ms, SpeedUnit unit) {
    if (static_cast<float>(ms) <= highest_calm) return std::string(calm_word);
    return numtext(converted(ms, unit));
}

}  // namespace nimbry
