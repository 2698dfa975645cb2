#include "engine/station/station_time.h"

#include <algorithm>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/station/digits.h"

namespace nimbry {
namespace {

// -1 when a digit is not decimal: civil_time() refuses that.
int decimal(const DigitTable<70>& digits, const DigitField& field) {
    const std::string text = field_text(digits, field);
    const bool all_decimal = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return all_decimal ? whole_number(text) : -1;
}

}  // namespace

std::optional<CivilTime> station_date(const DigitTable<70>& digits, int year) {
    using namespace digits_8f;
    if (!digits.set) return std::nullopt;
    return civil_time({.year = year,
                       .month = field_digit(digits, month),
                       .day = decimal(digits, day),
                       .hour = decimal(digits, hour),
                       .minute = decimal(digits, minute),
                       .second = decimal(digits, second)});
}

UtcTexts utc_texts(CivilTime utc) {
    const DateParts parts = parts_of(utc);
    const std::string year = padded(parts.year, 4);
    const std::string day = padded(parts.day, 2);
    const std::string month = full_month_name(parts.month);
    const std::string time = clock_text(utc);
    return {.stamp = iso_text(utc),
            .time = time,
            .date = day + " " + month + " " + year,
            .time_utc = time + " UTC",
            .month_day = month + " " + day};
}

void maketimes(Copy& copy) {
    copy.state.readings.utc = utc_texts(copy.ports.clock.utc_time());
}

}  // namespace nimbry
