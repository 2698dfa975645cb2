// Any digits as the station's clock, and any bytes as a date in a file. The laws: a date is one that its digits name,
// digit for digit, or there is none; a date's text reads back as that date, and any text that reads as one names it.
#include <string>

#include "engine/derived/dates.h"
#include "engine/station/digits.h"
#include "engine/station/station_time.h"
#include "fuzz/fuzz_input.h"

namespace {

using namespace nimbry;
using fuzz::expect;

void check_digits(fuzz::Input& input) {
    const int year = 2000 + input.next();
    std::array<std::uint8_t, span_8f.length> group{};
    for (std::uint8_t& byte : group) byte = static_cast<std::uint8_t>(input.next());
    DigitTable<2 * span_8f.length> digits;
    expect(!station_date(digits, year));
    fill(digits, std::span<const std::uint8_t, span_8f.length>(group));
    const std::optional<CivilTime> date = station_date(digits, year);
    if (!date) return;
    const DateParts parts = parts_of(*date);
    expect(parts.year == year);
    expect(field_text(digits, digits_8f::second) == padded(parts.second, 2));
    expect(field_text(digits, digits_8f::minute) == padded(parts.minute, 2));
    expect(field_text(digits, digits_8f::hour) == padded(parts.hour, 2));
    expect(field_text(digits, digits_8f::day) == padded(parts.day, 2));
    expect(field_digit(digits, digits_8f::month) == parts.month);
    expect(parse_stamp(stamp_text(*date)) == date);
}

void check_text(const std::string& text) {
    if (const std::optional<CivilTime> date = parse_stamp(text)) expect(parse_stamp(stamp_text(*date)) == date);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    check_digits(input);
    check_text(input.rest());
    return 0;
}
