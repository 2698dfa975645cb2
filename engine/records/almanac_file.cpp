#include "engine/records/almanac_file.h"

#include <optional>

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

// In any unit: what a damaged field spells beyond it is no rain.
constexpr double most_rain = 1e9;

bool is_row(std::string_view line) {
    return !line.empty() && line.front() >= '0' && line.front() <= '9';
}

// Nothing for a line of too few fields.
std::optional<AlmanacRow> read_row(std::string_view line) {
    AlmanacRow row;
    for (std::size_t n = 0; n < almanac_columns; ++n) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos && n + 1 < almanac_columns) return std::nullopt;
        row.fields[n] = line.substr(0, comma);
        line.remove_prefix(comma == std::string_view::npos ? line.size() : comma + 1);
    }
    return row;
}

// What a line of the head says of the day's end, if it says anything.
void look_for_day_end(std::string_view line, DayEnd& day_end) {
    if (line.find("Midnight") != std::string_view::npos) day_end = DayEnd::midnight;
    if (line.find("9.00am") != std::string_view::npos) day_end = DayEnd::nine;
    if (line.find("10.00am") != std::string_view::npos) day_end = DayEnd::ten;
}

}  // namespace

Almanac read_almanac(std::string_view text, DayEnd fallback) {
    Almanac almanac;
    almanac.day_end = fallback;
    while (!text.empty()) {
        const std::string_view line = take_line(text, LineEnds::newline);
        if (!is_row(line)) {
            if (almanac.rows.empty()) look_for_day_end(line, almanac.day_end);
        } else if (almanac.rows.size() < Almanac::most_rows) {
            const std::optional<AlmanacRow> row = read_row(line);
            if (!row) throw RunTimeError{ErrorNumber::index};
            almanac.rows.push_back(*row);
        }
    }
    return almanac;
}

std::size_t sound_length(std::string_view text) {
    const std::size_t last = text.rfind('\n') + 1;  // npos + 1: the text is one line
    const bool whole = last == text.size() || !is_row(text.substr(last)) || read_row(text.substr(last));
    return whole ? text.size() : last;
}

AlmanacRain almanac_rain(std::string_view text) {
    AlmanacRain rain;
    while (!text.empty()) {
        const std::string_view line = take_line(text, LineEnds::newline);
        if (!is_row(line)) continue;
        const std::optional<AlmanacRow> row = read_row(line);
        const double day = row ? Val((*row)[AlmanacColumn::rain]) : 0;
        if (!(day > 0) || day > most_rain) continue;
        ++rain.days;
        rain.total += day;
    }
    return rain;
}

int count_almanac_rows(std::string_view text) {
    int rows = 0;
    while (!text.empty())
        if (is_row(take_line(text, LineEnds::newline))) ++rows;
    return rows;
}

}  // namespace nimbry
