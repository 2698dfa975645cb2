#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "engine/derived/dates.h"
#include "engine/displays/box.h"
#include "engine/station/digits.h"

namespace nimbry {

// What the group routines share in writing their boxes.

/// Shows a sound reading: also takes back the red of a fault.
inline void show(Box& box, std::string text) {
    box.text = std::move(text);
    box.fore = colours::black;
}

/// When a record was made: " at 06:15 on 03", `gap`, "Jul". Digits as they stand; a month digit that is no month leaves
/// the text without one.
template <class Digits>
[[nodiscard]] std::string moment_text(const Digits& digits, const MomentFields& at, std::string_view gap) {
    return " at " + field_text(digits, at.hour) + ":" + field_text(digits, at.minute) + " on " +
           field_text(digits, at.day) + std::string(gap) + month_name(field_digit(digits, at.month));
}

}  // namespace nimbry
