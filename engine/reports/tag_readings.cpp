#include "engine/reports/tag_readings.h"

#include <string_view>

namespace nimbry::tags {
namespace {

constexpr std::string_view not_applicable = "n.a.";

const AlarmGust* gust_of_alarm(const TagView& v) {
    const AlarmState& alarms = v.state.alarms;
    const bool tells = v.state.reports.mailGenBusy && alarms.AlarmReason.find("wind speed") != std::string::npos;
    return tells && alarms.gust ? &*alarms.gust : nullptr;
}

bool wind_known(const TagView& v) {
    return v.state.readings.HaveWind && !v.state.sensors.pewgerr.failed;
}

std::string degrees_text(const TagView& v, int degrees) {
    return wind_known(v) ? numtext(degrees) : "";
}

std::string direction_text(const TagView& v, int degrees, const std::string& word) {
    if (v.state.sensors.pewgerr.failed) return "Error";
    return v.state.readings.HaveWind ? numtext(degrees) + "\xB0 (" + word + ")" : "";
}

std::string unless_failed(const SensorFault& fault, const std::string& text) {
    return fault.failed ? "" : text;
}

std::string or_not_applicable(const std::string& text) {
    return text.empty() ? std::string(not_applicable) : text;
}

}  // namespace

std::string gust(const TagView& v) {
    if (const auto* saved = gust_of_alarm(v)) return saved->text;
    return reading<6>(v);
}

std::string gust_number(const TagView& v) {
    if (const auto* saved = gust_of_alarm(v)) return saved->number;
    return speed_alone(v.state.panel.Text2[6].text);
}

template <SpeedUnit unit>
std::string peak_gust(const TagView& v) {
    if (const auto* saved = gust_of_alarm(v))
        return numtext(unit == SpeedUnit::ms ? saved->ms : converted(saved->ms, unit));
    return speed_or("0", Val(v.state.readings.MaxGustMs), unit);
}
template std::string peak_gust<SpeedUnit::ms>(const TagView&);
template std::string peak_gust<SpeedUnit::kmh>(const TagView&);
template std::string peak_gust<SpeedUnit::mph>(const TagView&);
template std::string peak_gust<SpeedUnit::knots>(const TagView&);

std::string average_number(const TagView& v) {
    return speed_alone(v.state.panel.Text2[3].text);
}

template <SpeedUnit unit>
std::string average_speed(const TagView& v) {
    return wind_known(v) ? speed_or("0", Val(v.state.readings.rawwindas), unit) : "0";
}
template std::string average_speed<SpeedUnit::ms>(const TagView&);
template std::string average_speed<SpeedUnit::kmh>(const TagView&);
template std::string average_speed<SpeedUnit::mph>(const TagView&);
template std::string average_speed<SpeedUnit::knots>(const TagView&);

std::string gust_direction(const TagView& v) {
    return direction_text(v, v.state.readings.gdirint, v.state.readings.gwcompaf);
}
std::string gust_degrees(const TagView& v) {
    return degrees_text(v, v.state.readings.gdirint);
}
std::string average_direction(const TagView& v) {
    return direction_text(v, v.state.readings.adirint, v.state.readings.awcompaf);
}
std::string average_degrees(const TagView& v) {
    return degrees_text(v, v.state.readings.adirint);
}

std::string highest_gust_number(const TagView& v) {
    const std::string number = number_alone(v.state.panel.TxtWindGLH.text);
    return number.empty() ? "0" : number;
}

std::string outdoor_metric(const TagView& v) {
    return unless_failed(v.state.sensors.peoterr, metrictext(v.state.readings.rawostemp));
}
std::string indoor_metric(const TagView& v) {
    return unless_failed(v.state.sensors.peiterr, metrictext(v.state.readings.rawintemp));
}
// The chill goes with the wind: its boxes say "Error" when the wind does.
std::string chill_metric(const TagView& v) {
    return unless_failed(v.state.sensors.pewgerr, v.state.readings.ChillInvariant);
}
std::string chill_number(const TagView& v) {
    return number_alone(v.state.panel.TxtWindChill.text);
}

std::string heat_number(const TagView& v) {
    return or_not_applicable(number_alone(v.state.panel.TxtHeatInd.text));
}
std::string heat_metric(const TagView& v) {
    return or_not_applicable(v.state.readings.HeatInvariant);
}
std::string heat_fahrenheit(const TagView& v) {
    const std::string& metric = v.state.readings.HeatInvariant;
    return metric.empty() ? std::string(not_applicable) : fahrenheit_double_sign(metric);
}

std::string dew_metric(const TagView& v) {
    return v.state.readings.DewInvariant;
}
std::string wet_bulb_metric(const TagView& v) {
    return v.state.readings.WetBulbInvariant;
}

std::string barometer_metric(const TagView& v) {
    return unless_failed(v.state.sensors.pebarerr, v.state.readings.BaroInvariant);
}
std::string barometer_inches(const TagView& v) {
    return inches_of_mercury(Val(barometer_metric(v)));
}

std::string rain_rate_mm(const TagView& v) {
    const bool known = !v.state.panel.TxtPeakRain().text.empty() && !v.state.sensors.pernerr.failed;
    return known ? numtext(v.state.readings.RainRateMm) : "";
}
std::string rain_rate_inches(const TagView& v) {
    return inches_of_rain(Val(rain_rate_mm(v)));
}
std::string rain_today_mm(const TagView& v) {
    return numtext(v.state.rain.raintoday);
}
std::string rain_today_inches(const TagView& v) {
    return inches_of_rain(static_cast<double>(v.state.rain.raintoday));
}
std::string rain_total_mm(const TagView& v) {
    return v.state.readings.RainTotalText;
}
std::string rain_total_inches(const TagView& v) {
    return inches_of_rain(Val(v.state.readings.RainTotalText));
}
std::string rain_total_text(const TagView& v) {
    return v.state.readings.RainSinceText;
}

std::string rain_since_midnight_text(const TagView& v) {
    const float mm = v.state.rain.RainSinceMidnight;
    if (v.state.units.rain == RainUnit::mm) return numtext(mm);
    // The product is a single before it is rounded.
    const auto amount = static_cast<float>(static_cast<double>(mm) * v.state.units.rcorr);
    return numtext(Round(static_cast<double>(amount), 2));
}

std::string last_rain(const TagView& v) {
    return numtext(v.state.records.LastRain) + " " + v.state.units.rain_text;
}
std::string days_since_rain(const TagView& v) {
    return numtext(v.state.records.DaySinceRain);
}
std::string rain_last_hour_mm(const TagView& v) {
    return numtext(v.state.rain.LastHourSum);
}
std::string rain_last_hour_inches(const TagView& v) {
    return inches_of_rain(static_cast<double>(v.state.rain.LastHourSum));
}

}  // namespace nimbry::tags
