#pragma once

#include <cstddef>
#include <string>

#include "engine/core/main_settings.h"
#include "engine/reports/tag_view.h"

namespace nimbry {

/// When the weather day ends, as tags and data files name it: "Midnight", "9.00 am", "10.00 am"; empty when no choice
/// is set.
[[nodiscard]] std::string changeover_name(const MainSettings& settings);

/// A coordinate in degrees, minutes and seconds: "33° 51' 24.48'' South". Worked out from the single that is nearest to
/// it, and never carried, so -33.85 gives "33° 50' 59.99'' South" and 0.7 "00° 41' 60.00'' North". "Unknown" for
/// "999" and for what is no coordinate.
[[nodiscard]] std::string latitude_text(std::string_view decimal_degrees);
[[nodiscard]] std::string longitude_text(std::string_view decimal_degrees);

namespace tags {

// Clock, mail, the user's own texts, the sun and the place: one function a tag of the table (tag_table.cpp).

std::string mail_short_text(const TagView& v);
std::string mail_title(const TagView& v);

std::string time_now(const TagView& v);
/// Two digits of the time without a leading zero, from this place on.
template <std::size_t from>
std::string time_part(const TagView& v);
std::string date_now(const TagView& v);
template <std::string UtcTexts::*text>
std::string utc(const TagView& v) {
    return v.state.readings.utc.*text;
}
std::string changeover_time(const TagView& v);

template <std::string MainSettings::*comment>
std::string user_comment(const TagView& v) {
    return v.state.settings.*comment;
}
std::string user_file(const TagView& v);

template <std::string SunState::*text>
std::string sun_text(const TagView& v) {
    return v.state.sun.*text;
}
std::string sunrise_sentence(const TagView& v);
std::string sunset_sentence(const TagView& v);

std::string temperature_unit(const TagView& v);
template <std::string Units::*label>
std::string unit_label(const TagView& v) {
    return v.state.units.*label;
}
std::string credit(const TagView& v);
std::string latitude(const TagView& v);
std::string longitude(const TagView& v);

}  // namespace tags
}  // namespace nimbry
