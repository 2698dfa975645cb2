#include "engine/reports/tag_words.h"

#include <cmath>
#include <string_view>

#include "engine/core/separator.h"
#include "engine/core/version.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"
#include "engine/reports/user_files.h"
#include "engine/sun/location.h"

namespace nimbry {
namespace {

// Two places for degrees and minutes, three for a longitude's degrees.
std::string coordinate_text(std::string_view decimal_degrees, int width, const char* negative, const char* positive) {
    const std::string text = repcomma(std::string(decimal_degrees));
    const double coordinate = Val(text);
    if (!IsNumeric(text) || std::fabs(coordinate) >= no_location) return "Unknown";

    const auto size = static_cast<double>(static_cast<float>(std::fabs(coordinate)));
    const double degrees = std::floor(size);
    const double minutes = std::floor((size - degrees) * 60);
    const double seconds = (size - degrees - minutes / 60) * 3600;
    const int hundredths = static_cast<int>(Round(seconds * 100, 0));
    return padded(static_cast<int>(degrees), width) + "\xB0 " + padded(static_cast<int>(minutes), 2) + "' " +
           padded(hundredths / 100, 2) + "." + padded(hundredths % 100, 2) + "'' " +
           (coordinate < 0 ? negative : positive);
}

/// A heading with its line, the line of asterisks and an empty one.
std::string ruled_off(std::string heading) {
    return heading.append(line_end).append(separator_line).append(line_end).append(line_end);
}

std::string alarm_heading(const std::string& reason) {
    return "Automatic ALARM email from Nimbry " + std::string(program_version) + std::string(line_end) +
           ruled_off("This email was sent because " + reason);
}

std::string sun_sentence(const TagView& v, const std::string& sentence, const char* event) {
    const MainSettings& settings = v.state.settings;
    if (entered_location(settings.Latitude, settings.Longitude)) return sentence;
    return std::string("Can't calculate ") + event + " as no location entered";
}

}  // namespace

std::string changeover_name(const MainSettings& settings) {
    std::string name;
    if (settings.tmidnight) name = "Midnight";
    if (settings.tnineam) name = settings.AddOneHour ? "10.00 am" : "9.00 am";
    return name;
}

std::string latitude_text(std::string_view decimal_degrees) {
    return coordinate_text(decimal_degrees, 2, "South", "North");
}

std::string longitude_text(std::string_view decimal_degrees) {
    return coordinate_text(decimal_degrees, 3, "West", "East");
}

namespace tags {

std::string mail_short_text(const TagView& v) {
    return v.state.reports.short_text;
}

std::string mail_title(const TagView& v) {
    if (v.state.reports.IsAlarmMail) {
        v.mail_body += alarm_heading(v.state.alarms.AlarmReason);
        return "";
    }
    return ruled_off(v.state.publish.NimbryFTPSetup.MailTitle);
}

std::string time_now(const TagView& v) {
    return v.state.readings.rdattime;
}

template <std::size_t from>
std::string time_part(const TagView& v) {
    const std::string& time = v.state.readings.rdattime;
    return time.size() < from + 2 ? "" : numtext(Val(time.substr(from, 2)));
}
template std::string time_part<0>(const TagView&);
template std::string time_part<3>(const TagView&);
template std::string time_part<6>(const TagView&);

std::string date_now(const TagView& v) {
    return v.state.readings.dtvar ? date_text(*v.state.readings.dtvar) : "";
}

std::string changeover_time(const TagView& v) {
    return changeover_name(v.state.settings);
}

// Read anew at each occurrence, so what another program wrote a moment ago is in the page.
std::string user_file(const TagView& v) {
    std::string text;
    read_user_file(v.files, "webfiletag.txt", text);
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
    return text;
}

std::string sunrise_sentence(const TagView& v) {
    return sun_sentence(v, v.state.sun.websunrise, "Sunrise");
}
std::string sunset_sentence(const TagView& v) {
    return sun_sentence(v, v.state.sun.websunset, "Sunset");
}

std::string temperature_unit(const TagView& v) {
    return trimmed(v.state.units.temperature_text);
}

std::string credit(const TagView&) {
    return "<font size=\"-1\">Powered by Dara Holm's <B>Nimbry</b> program.</font><BR>";
}

std::string latitude(const TagView& v) {
    return latitude_text(v.state.settings.Latitude);
}
std::string longitude(const TagView& v) {
    return longitude_text(v.state.settings.Longitude);
}

}  // namespace tags
}  // namespace nimbry
