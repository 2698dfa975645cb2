#pragma once

#include <cstddef>
#include <string>

#include "engine/derived/number_text.h"
#include "engine/reports/tag_forms.h"
#include "engine/reports/tag_view.h"

namespace nimbry::tags {

// The present weather as tags print it, one function a tag of the table (tag_table.cpp). "Text" is what the main window
// shows, without the blanks around it; "Error" while the sensor fails. A metric value is empty before the first reading
// and while its sensor fails.

/// A reading of the main window, by its place in MainPanel::Text2.
template <std::size_t index>
std::string reading(const TagView& v) {
    return trimmed(v.state.panel.Text2[index].text);
}
template <std::size_t index>
std::string reading_number(const TagView& v) {
    return number_alone(v.state.panel.Text2[index].text);
}

/// Any other reading of the main window.
template <Box MainPanel::*box>
std::string shown(const TagView& v) {
    return trimmed((v.state.panel.*box).text);
}

// Wind. In a mail that tells of a wind alarm the gust is the one that raised it.
std::string gust(const TagView& v);
std::string gust_number(const TagView& v);
template <SpeedUnit unit>
std::string peak_gust(const TagView& v);
std::string average_number(const TagView& v);
template <SpeedUnit unit>
std::string average_speed(const TagView& v);
std::string gust_direction(const TagView& v);
std::string gust_degrees(const TagView& v);
std::string average_direction(const TagView& v);
std::string average_degrees(const TagView& v);
template <std::string Readings::*word>
std::string compass(const TagView& v) {
    return v.state.readings.*word;
}
std::string highest_gust_number(const TagView& v);

// Temperatures
std::string outdoor_metric(const TagView& v);
std::string indoor_metric(const TagView& v);
std::string chill_metric(const TagView& v);
std::string chill_number(const TagView& v);
std::string heat_number(const TagView& v);
std::string heat_metric(const TagView& v);
std::string heat_fahrenheit(const TagView& v);
std::string dew_metric(const TagView& v);
std::string wet_bulb_metric(const TagView& v);

/// A metric temperature in Fahrenheit, in the two forms.
template <std::string (*metric)(const TagView&)>
std::string in_fahrenheit(const TagView& v) {
    return fahrenheit(metric(v));
}
template <std::string (*metric)(const TagView&)>
std::string in_fahrenheit_double_sign(const TagView& v) {
    return fahrenheit_double_sign(metric(v));
}

// Barometer
std::string barometer_metric(const TagView& v);
std::string barometer_inches(const TagView& v);

// Rain
std::string rain_rate_mm(const TagView& v);
std::string rain_rate_inches(const TagView& v);
std::string rain_today_mm(const TagView& v);
std::string rain_today_inches(const TagView& v);
std::string rain_total_mm(const TagView& v);
std::string rain_total_inches(const TagView& v);
std::string rain_total_text(const TagView& v);
std::string rain_since_midnight_text(const TagView& v);
std::string last_rain(const TagView& v);
std::string days_since_rain(const TagView& v);
std::string rain_last_hour_mm(const TagView& v);
std::string rain_last_hour_inches(const TagView& v);

}  // namespace nimbry::tags
