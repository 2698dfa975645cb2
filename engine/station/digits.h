#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "engine/station/comm_state.h"
#include "engine/station/group_layout.h"

namespace nimbry {

// From the bytes of a group to its digits, and from the digits to the texts that the readings keep. Nothing here fails:
// a digit A to F in a number stays in its text, where Val() stops at it; an unset table has no texts and no flags.

/// Writes two upper-case hexadecimal digits for each byte. `digits` has room for exactly 2 * bytes.size() characters.
void write_digits(std::span<const std::uint8_t> bytes, std::span<char> digits);

/// Fills a group's table from its bytes (Count / 2 of them) and marks it as set.
template <std::size_t Count>
void fill(DigitTable<Count>& table, std::span<const std::uint8_t, Count / 2> bytes) {
    write_digits(bytes, table.digits);
    table.set = true;
}

/// The value of a hexadecimal digit, 0 to 15; -1 for a character that is none.
[[nodiscard]] int hex_value(char digit);

namespace detail {
[[nodiscard]] std::string field_text(std::span<const char> digits, const DigitField& field, std::size_t decimals);
}

/// A field's digits as text, in the field's order, with a point before the last `decimals` of them:
/// "12.3" for tenths, "1013" for four whole digits. Leading zeros stay. "" while the table is unset.
template <std::size_t Count>
[[nodiscard]] std::string field_text(const DigitTable<Count>& table, const DigitField& field,
                                     std::size_t decimals = 0) {
    return table.set ? detail::field_text(table.digits, field, decimals) : std::string();
}

/// The value of one digit, 0 to 15; 0 while the table is unset.
template <std::size_t Count>
[[nodiscard]] int digit_value(const DigitTable<Count>& table, int place) {
    const int value = table.set ? hex_value(table(place)) : 0;
    return value < 0 ? 0 : value;
}

/// The value of a field that is one hexadecimal digit (a month, a forecast), 0 to 15; 0 while the table is unset.
template <std::size_t Count>
[[nodiscard]] int field_digit(const DigitTable<Count>& table, const DigitField& field) {
    return digit_value(table, field.places[0]);
}

/// True when one of the flag's bits is set; false while the table is unset.
template <std::size_t Count>
[[nodiscard]] bool flag_set(const DigitTable<Count>& table, const FlagField& flag) {
    return (digit_value(table, flag.place) & flag.mask) != 0;
}

/// True when the digit bears the fault mark; false while the table is unset.
template <std::size_t Count>
[[nodiscard]] bool fault_marked(const DigitTable<Count>& table, const FaultMark& mark) {
    return table.set && table(mark.place) == fault_mark_digit;
}

}  // namespace nimbry
