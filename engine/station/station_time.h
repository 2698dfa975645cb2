#pragma once

#include <optional>
#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// The station's date-time from group 8F's digits, in the year that is given (the group sends none). Nothing unless all
/// digits are decimal and name a possible moment: month 1 to 12, a day that the month has in that year, 0 to 23 hours.
/// So 29 February of a common year is no date, and the station's whole day is lost.
[[nodiscard]] std::optional<CivilTime> station_date(const DigitTable<70>& digits, int year);

/// The texts of the present UTC moment by the computer's clock, for tags, uploads and the raw line.
[[nodiscard]] UtcTexts utc_texts(CivilTime utc);

/// Sets the UTC texts of the readings. Called for every train with a possible date.
void maketimes(Copy& copy);

}  // namespace nimbry
