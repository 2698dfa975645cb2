#pragma once

#include <cmath>
#include <string>

#include "engine/derived/reading_text.h"
#include "engine/reports/tag_readings.h"
#include "engine/reports/tag_view.h"

namespace nimbry::tags {

// Boxes and the records of the day, one function a tag of the table (tag_table.cpp).

/// A box of the main window as it stands, blanks too.
template <Box MainPanel::*box>
std::string box_text(const TagView& v) {
    return (v.state.panel.*box).text;
}

/// A box of the additional data window as it stands.
template <Box AdditionalPanel::*box>
std::string additional_text(const TagView& v) {
    return (v.state.additional.*box).text;
}

/// A record of the day has seen a reading: it no longer holds its reset value.
template <float DayExtremes::*record>
bool seen(const TagView& v) {
    return v.state.records.day.*record != DayExtremes{}.*record;
}

/// A record as a metric number; empty as long as the day has none.
template <float DayExtremes::*record>
std::string record_metric(const TagView& v) {
    return seen<record>(v) ? numtext(v.state.records.day.*record) : "";
}

/// The same of a temperature, with its sign.
template <float DayExtremes::*record>
std::string record_celsius(const TagView& v) {
    const float celsius = v.state.records.day.*record;
    return seen<record>(v) ? sign_of(static_cast<double>(celsius)) + numtext(std::fabs(celsius)) : "";
}
template <float DayExtremes::*record>
std::string record_fahrenheit(const TagView& v) {
    return fahrenheit(record_celsius<record>(v));
}

/// The highest heat index: "n.a." as long as the day has none.
std::string record_heat_celsius(const TagView& v);
std::string record_heat_fahrenheit(const TagView& v);

template <float DayExtremes::*record>
std::string record_inches_of_mercury(const TagView& v) {
    return inches_of_mercury(Val(record_metric<record>(v)));
}
template <float DayExtremes::*record>
std::string record_inches_of_rain(const TagView& v) {
    return inches_of_rain(Val(record_metric<record>(v)));
}

/// The strongest gust of the day in one of the fixed units; "Calm" at 0.2 m/s and below, and as long as there is none.
template <SpeedUnit unit>
std::string record_gust(const TagView& v) {
    return speed_or("Calm", static_cast<double>(v.state.records.day.maxwind), unit);
}

}  // namespace nimbry::tags
