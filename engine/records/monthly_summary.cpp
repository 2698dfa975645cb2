#include "engine/records/monthly_summary.h"

#include <array>
#include <optional>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/records/almanac_statistics.h"

namespace nimbry {
namespace {

using C = AlmanacColumn;
using K = AlmanacKind;

constexpr std::string_view no_heat_index = "There are no valid heat index entries in the almanac";
constexpr std::string_view degree = "\xB0";

// The tags, in their order. Kept on purpose: two carry one M, and the later ones begin with SUB.
constexpr std::array<std::string_view, 40> summary_tags{
    "SUMMAXTEMP", "SUMMINTEMP", "SUMMAXHUMI", "SUMMINHUMI", "SUMMAXDEWP", "SUMMINDEWP", "SUMMINCHIL", "SUMMAXHIND",
    "SUMMAXBARO", "SUMMINBARO", "SUMMAXWIND", "SUMAXINTMP", "SUMININTMP", "SUMAVGTEMP", "SUMAVMXTMP", "SUMAVMNTMP",
    "SUMAVGHUMI", "SUMAVMXHUM", "SUMAVMNHUM", "SUMAVDEWPT", "SUMAVMAXDP", "SUMAVMINDP", "SUBAVMINWC", "SUBAVMAXHI",
    "SUBAVGBARO", "SUBAVMXBAR", "SUBAVMNBAR", "SUBAVINTMP", "SUBAVMXITP", "SUBAVMNITP", "SUBDAYWTRN", "SUBRAINDYS",
    "SUBMXRNRAT", "SUBRAINTOT", "SUBDAYSNRN", "SUBLSTRAIN", "SUBMXAVWND", "SUBMXAWDIR", "SUBCHGTIME", "SUBPERCOVD"};

struct Extreme {
    std::string_view label, tag;
    bool highest;
    C column;
    K kind;
};
constexpr std::array<Extreme, 13> extremes_in_order{{
    {"Maximum temperature: ", "SUMMAXTEMP", true, C::max_temperature, K::temperature},
    {"Minimum temperature: ", "SUMMINTEMP", false, C::min_temperature, K::temperature},
    {"Maximum humidity: ", "SUMMAXHUMI", true, C::max_humidity, K::humidity},
    {"Minimum humidity: ", "SUMMINHUMI", false, C::min_humidity, K::humidity},
    {"Maximum dew point: ", "SUMMAXDEWP", true, C::max_dew_point, K::temperature},
    {"Minimum dew point: ", "SUMMINDEWP", false, C::min_dew_point, K::temperature},
    {"Minimum wind chill: ", "SUMMINCHIL", false, C::min_chill, K::temperature},
    {"Maximum heat index: ", "SUMMAXHIND", true, C::max_heat_index, K::temperature},
    {"Maximum barometric pressure: ", "SUMMAXBARO", true, C::max_barometer, K::barometer},
    {"Minimum barometric pressure: ", "SUMMINBARO", false, C::min_barometer, K::barometer},
    {"Maximum wind gust: ", "SUMMAXWIND", true, C::max_gust, K::gust},
    {"Maximum indoor temperature: ", "SUMAXINTMP", true, C::max_indoor, K::temperature},
    {"Minimum indoor temperature: ", "SUMININTMP", false, C::min_indoor, K::temperature},
}};

// The mean of one column, or of two columns together.
struct Average {
    std::string_view label, tag;
    C first, second;
    K kind;
};
constexpr std::array<Average, 19> averages_in_order{{
    {"Average maximum temperature: ", "SUMAVMXTMP", C::max_temperature, C::max_temperature, K::temperature},
    {"Average minimum temperature: ", "SUMAVMNTMP", C::min_temperature, C::min_temperature, K::temperature},
    {"Average temperature: ", "SUMAVGTEMP", C::max_temperature, C::min_temperature, K::temperature},
    {"Average maximum humidity: ", "SUMAVMXHUM", C::max_humidity, C::max_humidity, K::humidity},
    {"Average minimum humidity: ", "SUMAVMNHUM", C::min_humidity, C::min_humidity, K::humidity},
    {"Average humidity: ", "SUMAVGHUMI", C::max_humidity, C::min_humidity, K::humidity},
    {"Average maximum dew point: ", "SUMAVMAXDP", C::max_dew_point, C::max_dew_point, K::temperature},
    {"Average minimum dew point: ", "SUMAVMINDP", C::min_dew_point, C::min_dew_point, K::temperature},
    {"Average dew point: ", "SUMAVDEWPT", C::max_dew_point, C::min_dew_point, K::temperature},
    {"Average minimum wind chill: ", "SUBAVMINWC", C::min_chill, C::min_chill, K::temperature},
    {"Average maximum heat index: ", "SUBAVMAXHI", C::max_heat_index, C::max_heat_index, K::temperature},
    {"Average maximum barometric pressure: ", "SUBAVMXBAR", C::max_barometer, C::max_barometer, K::barometer},
    {"Average minimum barometric pressure: ", "SUBAVMNBAR", C::min_barometer, C::min_barometer, K::barometer},
    {"Average barometric pressure: ", "SUBAVGBARO", C::max_barometer, C::min_barometer, K::barometer},
    {"Average maximum indoor temperature: ", "SUBAVMXITP", C::max_indoor, C::max_indoor, K::temperature},
    {"Average minimum indoor temperature: ", "SUBAVMNITP", C::min_indoor, C::min_indoor, K::temperature},
    {"Average indoor temperature: ", "SUBAVINTMP", C::max_indoor, C::min_indoor, K::temperature},
    {"Average of daily peak wind gusts: ", "SUBMXAVWND", C::max_gust, C::max_gust, K::gust},
    {"Average of daily peak wind gust direction: ", "SUBMXAWDIR", C::max_gust_direction, C::max_gust_direction,
     K::direction},
}};

std::string_view day_end_words(DayEnd day_end) {
    switch (day_end) {
        case DayEnd::midnight: return "Midnight";
        case DayEnd::nine: return "9.00 am";
        case DayEnd::ten: return "10.00 am";
    }
    return "";
}

// Writes the summary section by section; each line's value part becomes its tag's text.
class Writer {
public:
    Writer(const Almanac& almanac, const Units& units, const SummaryRequest& request)
        : almanac_(almanac), units_(units), request_(request) {
        for (const std::string_view tag : summary_tags) summary_.tags.emplace(tag, "");
    }

    MonthlySummary write() {
        head();
        if (almanac_.rows.empty()) return std::move(summary_);
        period();
        heading("Maximums and minimums");
        for (const Extreme& extreme : extremes_in_order) value(extreme.label, extreme.tag, extreme_text(extreme));
        heading("Averages");
        for (const Average& average : averages_in_order) value(average.label, average.tag, average_text(average));
        heading("Rainfall summary:");
        rainfall();
        return std::move(summary_);
    }

private:
    void line(std::string_view text) { summary_.text.append(text).append("\r\n"); }
    void heading(std::string_view text) {
        line("");
        line(text);
    }
    void tag(std::string_view name, std::string text) { summary_.tags.find(name)->second = std::move(text); }
    void value(std::string_view label, std::string_view name, const std::string& text) {
        // A month that was never warm enough for a heat index says so in a sentence of its own.
        line(text == no_heat_index ? text : std::string(label) + text);
        tag(name, text);
    }

    void head() {
        line("Nimbry monthly summary for " + title());
        line(std::string(60, '-'));
        line("");
        line("There are " + numtext(static_cast<int>(almanac_.rows.size())) + " entries in the selected almanac file");
        tag("SUBCHGTIME", std::string(day_end_words(almanac_.day_end)));
    }

    std::string title() const {
        if (request_.live || almanac_.rows.empty()) return "the current month";
        const int month = month_number(trimmed(almanac_.rows.front()[C::month]));
        return full_month_name(month) + " " + numtext(request_.year);
    }

    // The first row of a morning file closes the 24 hours that began the day before.
    std::string first_date() const {
        return row_date(almanac_.rows.front(), request_.year, almanac_.day_end == DayEnd::midnight ? 0 : 1);
    }
    std::string last_date() const { return row_date(almanac_.rows.back(), request_.year); }

    void period() {
        const std::string covered = first_date() + " to " + last_date();
        line("covering the period " + covered + ".");
        line("(Entries are for the 24 hours ending at " + std::string(day_end_words(almanac_.day_end)) +
             " on the indicated dates)");
        tag("SUBPERCOVD", covered);
    }

    std::string when(const AlmanacRow& row, C column) const {
        const Moment moment = moment_of(row, row.after(column), almanac_.day_end, request_.year);
        return " at " + moment.time + " on " + moment.date;
    }

    std::string unit_of(K kind) const {
        switch (kind) {
            case K::temperature: return units_.temperature_text;
            case K::humidity: return " %";
            case K::barometer: return " " + units_.barometer_text;
            case K::rain_rate: return " " + units_.rain_text + "/hour";
            case K::gust: return " " + units_.wind_text;
            case K::direction: return std::string(degree);
        }
        return "";
    }

    std::string extreme_text(const Extreme& extreme) const {
        const AlmanacRow* row = extreme.highest ? greatest(almanac_, extreme.column, extreme.kind)
                                                : least(almanac_, extreme.column, extreme.kind);
        if (row == nullptr)
            return extreme.column == C::max_heat_index ? std::string(no_heat_index) : "- No Valid Data -";
        std::string text = trimmed((*row)[extreme.column]) + unit_of(extreme.kind);
        if (extreme.kind == K::gust) text += ", " + trimmed((*row)[C::max_gust_direction]) + std::string(degree);
        return text + when(*row, extreme.column);
    }

    std::string average_text(const Average& average) const {
        const auto result = average.first == average.second
                                ? mean(almanac_, {average.first}, average.kind)
                                : mean(almanac_, {average.first, average.second}, average.kind);
        if (!result) return "n.a.";
        if (average.kind == K::temperature) return signed_text(*result, units_).with_unit;
        return numtext(*result) + unit_of(average.kind);
    }

    void rainfall() {
        double total = 0;
        int rain_days = 0;
        for (const AlmanacRow& row : almanac_.rows) {
            const double rain = Val(row[C::rain]);
            total += rain;
            if (rain > 0) ++rain_days;
        }
        const std::string unit = " " + units_.rain_text;
        const std::string total_text = numtext(Round(total, 2)) + unit;
        line("Total rainfall for " + first_date() + " to " + last_date() + ": " + total_text);
        tag("SUBRAINTOT", total_text);
        value("Number of rainfall days: ", "SUBRAINDYS", numtext(rain_days));
        tag("SUBDAYWTRN", numtext(static_cast<int>(almanac_.rows.size()) - rain_days));
        peak_rate();
        if (!request_.live) return;
        value("Days Since Rain: ", "SUBDAYSNRN", numtext(request_.DaySinceRain));
        value("Last rainfall amount: ", "SUBLSTRAIN", numtext(request_.LastRain) + unit);
    }

    void peak_rate() {
        const AlmanacRow* row = greatest(almanac_, C::max_rain_rate, K::rain_rate);
        if (row == nullptr || Val((*row)[C::max_rain_rate]) == 0) {
            line("Maximum peak rainfall rate recorded is zero");
            tag("SUBMXRNRAT", "zero");
            return;
        }
        value("Maximum peak rainfall rate: ", "SUBMXRNRAT",
              trimmed((*row)[C::max_rain_rate]) + unit_of(K::rain_rate) + when(*row, C::max_rain_rate));
    }

    const Almanac& almanac_;
    const Units& units_;
    const SummaryRequest& request_;
    MonthlySummary summary_;
};

}  // namespace

MonthlySummary monthly_summary(const Almanac& almanac, const Units& units, const SummaryRequest& request) {
    return Writer(almanac, units, request).write();
}

std::string Sumresolvtag(std::string_view line, const MonthlySummary& summary) {
    constexpr std::size_t name_length = 10;
    constexpr std::string_view mark = "~~";
    std::string resolved;
    while (!line.empty()) {
        const std::size_t at = line.find(mark);
        if (at == std::string_view::npos) break;
        resolved += line.substr(0, at);
        line.remove_prefix(at);
        const auto found = summary.tags.find(line.substr(mark.size(), name_length));
        if (found != summary.tags.end() && line.substr(mark.size() + name_length, mark.size()) == mark) {
            resolved += found->second;
            line.remove_prefix(2 * mark.size() + name_length);
        } else {
            // One character only: "~~~SUMMAXTEMP~~" holds a tag behind its first tilde.
            resolved += line.front();
            line.remove_prefix(1);
        }
    }
    return resolved.append(line);
}

}  // namespace nimbry
