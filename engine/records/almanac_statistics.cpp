#include "engine/records/almanac_statistics.h"

#include <functional>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

constexpr int seconds_per_day = 86400;
constexpr std::string_view no_date = " ?? ";

double value_of(const AlmanacRow& row, AlmanacColumn column) {
    return Val(row[column]);
}

// Of equal values the last row stands, so a row wins when the best so far does not beat it.
template <class Beats>
const AlmanacRow* best(const Almanac& almanac, AlmanacColumn column, AlmanacKind kind, Beats beats) {
    const AlmanacRow* found = nullptr;
    for (const AlmanacRow& row : almanac.rows) {
        const double value = value_of(row, column);
        if (is_no_data(kind, value)) continue;
        if (found == nullptr || !beats(value_of(*found, column), value)) found = &row;
    }
    return found;
}

std::optional<CivilTime> date_of(const AlmanacRow& row, int year) {
    DateParts parts;
    parts.year = year;
    parts.month = month_number(trimmed(row[AlmanacColumn::month]));
    parts.day = whole_number(row[AlmanacColumn::date]);
    return civil_time(parts);
}

// "H:MM" to "HH:MM:SS" as seconds of the day.
std::optional<int> seconds_of(const std::string& text) {
    const std::string time = trimmed(text);
    const std::size_t first = time.find(':');
    if (first == std::string::npos) return std::nullopt;
    const std::size_t second = time.find(':', first + 1);
    const std::string parts[] = {time.substr(0, first), time.substr(first + 1, second - first - 1),
                                 second == std::string::npos ? "0" : time.substr(second + 1)};
    const int most[] = {23, 59, 59};
    int seconds = 0;
    for (int n = 0; n < 3; ++n) {
        if (parts[n].empty() || parts[n].size() > 2 || parts[n].find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        const int value = whole_number(parts[n]);
        if (value > most[n]) return std::nullopt;
        seconds = seconds * 60 + value;
    }
    return seconds;
}

// Seconds that, added to a time of day, pass midnight when that time lies after the day's end. Odd constants, as given.
int offsetsecs(DayEnd day_end) {
    switch (day_end) {
        case DayEnd::midnight: return 0;
        case DayEnd::nine: return 53999;
        case DayEnd::ten: return 50399;
    }
    return 0;
}

std::string day_and_month(CivilTime date) {
    const DateParts parts = parts_of(date);
    return padded(parts.day, 2) + " " + full_month_name(parts.month);
}

}  // namespace

bool is_no_data(AlmanacKind kind, double value) {
    switch (kind) {
        // In Fahrenheit the marks -999 and 999 read -1766.2 and 1830.2.
        case AlmanacKind::temperature: return value == -999 || value == 999 || value == -1766.2 || value == 1830.2;
        case AlmanacKind::humidity: return value == -999 || value == 999;
        // In inches of mercury -999 and 9999 read -29.5 and 295.26.
        case AlmanacKind::barometer: return value == -999 || value == 9999 || value == -29.5 || value == 295.26;
        // In inches -999 reads -39.33.
        case AlmanacKind::rain_rate: return value == -999 || value == -39.33;
        case AlmanacKind::gust:
        case AlmanacKind::direction: return false;
    }
    return false;
}

const AlmanacRow* greatest(const Almanac& almanac, AlmanacColumn column, AlmanacKind kind) {
    return best(almanac, column, kind, std::greater<>());
}

const AlmanacRow* least(const Almanac& almanac, AlmanacColumn column, AlmanacKind kind) {
    return best(almanac, column, kind, std::less<>());
}

std::optional<double> mean(const Almanac& almanac, std::initializer_list<AlmanacColumn> columns, AlmanacKind kind) {
    double sum = 0;
    int count = 0;
    for (const AlmanacRow& row : almanac.rows) {
        for (const AlmanacColumn column : columns) {
            const double value = value_of(row, column);
            if (is_no_data(kind, value)) continue;
            sum += value;
            ++count;
        }
    }
    if (count == 0) return std::nullopt;
    return Round(sum / count, 1);
}

Moment moment_of(const AlmanacRow& row, const std::string& time, DayEnd day_end, int year) {
    std::optional<CivilTime> date = date_of(row, year);
    const std::optional<int> seconds = seconds_of(time);
    if (!date || !seconds) return {"* Invalid time or date *", std::string(no_date)};
    if (*seconds + offsetsecs(day_end) >= seconds_per_day) *date -= std::chrono::days{1};
    const std::string clock = stamp_text(*date + std::chrono::seconds{*seconds});
    return {clock.substr(clock.size() - 8), day_and_month(*date)};
}

std::string row_date(const AlmanacRow& row, int year, int days_back) {
    const std::optional<CivilTime> date = date_of(row, year);
    return date ? day_and_month(*date - std::chrono::days{days_back}) : std::string(no_date);
}

}  // namespace nimbry
