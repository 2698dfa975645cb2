#include "engine/reports/raw_line.h"

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/reports/tag_boxes.h"
#include "engine/reports/tag_readings.h"
#include "engine/reports/tag_words.h"

namespace nimbry {
namespace {

using namespace tags;

std::string whole_text(const std::string& digits) {
    return digits.empty() ? "" : numtext(Val(digits));
}

template <std::size_t index>
std::string humidity(const TagView& v) {
    return whole_text(reading_number<index>(v));
}

// What stands at the head of the record's box, "81" of "81 % at 06:10".
template <Box MainPanel::*box>
std::string humidity_record(const TagView& v) {
    const std::string& text = (v.state.panel.*box).text;
    const bool is_number = !text.empty() && text.front() >= '0' && text.front() <= '9';
    return is_number ? numtext(Val(text.substr(0, text.find(' ')))) : "";
}

std::string average_ms(const TagView& v) {
    return average_degrees(v).empty() ? "" : whole_text(v.state.readings.rawwindas);
}

std::string peak_ms(const TagView& v) {
    return numtext(Val(v.state.readings.MaxGustMs));
}

std::string heat(const TagView& v) {
    return v.state.readings.HeatInvariant;
}

std::string rain_today(const TagView& v) {
    return v.state.rain.rainbefore ? numtext(v.state.rain.raintoday) : "";
}

std::string forecast(const TagView& v) {
    const int outlook = v.state.readings.rdatoutlook;
    return outlook == 0 ? "" : numtext(outlook);
}

std::string upload_minutes(const TagView& v) {
    return numtext(v.state.publish.FtpMinutes);
}

using D = DayExtremes;

// The order is what other programs read by.
constexpr std::string (*values[])(const TagView&) = {
    date_now,
    box_text<&MainPanel::TxtDate>,
    time_now,
    rain_total_text,
    upload_minutes,
    outdoor_metric,
    humidity<2>,
    indoor_metric,
    humidity<9>,
    barometer_metric,
    compass<&Readings::BaroTrendCode>,
    dew_metric,
    heat,
    chill_metric,
    peak_ms,
    gust_degrees,
    average_ms,
    average_degrees,
    rain_rate_mm,
    rain_today,
    rain_total_mm,
    forecast,
    wet_bulb_metric,
    record_celsius<&D::maxtemp>,
    record_celsius<&D::mintemp>,
    record_celsius<&D::maxintemp>,
    record_celsius<&D::minintemp>,
    humidity_record<&MainPanel::TxtHumMax>,
    humidity_record<&MainPanel::TxtHumMin>,
    record_metric<&D::maxwind>,
    record_metric<&D::maxbar>,
    record_metric<&D::minbar>,
    record_metric<&D::maxrain>,
    record_celsius<&D::maxdew>,
    record_celsius<&D::mindew>,
    record_celsius<&D::minwc>,
    record_celsius<&D::maxhi>,
    utc<&UtcTexts::time_utc>,
    utc<&UtcTexts::month_day>,
};
static_assert(std::size(values) == 39);

std::string joined(const std::vector<std::string>& parts, char between) {
    std::string line;
    for (const std::string& part : parts) {
        if (&part != &parts.front()) line += between;
        line += part;
    }
    return line;
}

}  // namespace

std::vector<std::string> raw_values(const Copy& copy) {
    const TagView view{copy.state, copy.ports.files, copy.state.reports.mail_body};
    std::vector<std::string> texts;
    for (const auto value : values) texts.push_back(value(view));
    return texts;
}

std::string raw_line(const Copy& copy) {
    return joined(raw_values(copy), '|') + "\r\n";
}

std::string data_line(const Copy& copy) {
    return joined(raw_values(copy), ',') + "," + changeover_name(copy.state.settings) + "\r\n";
}

void rewrite_if_free(Files& files, const std::string& name, std::string_view text) {
    if (!files.in_use(name)) require(files.rewrite(name, text));
}

}  // namespace nimbry
