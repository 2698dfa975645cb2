#pragma once

#include <initializer_list>
#include <optional>
#include <string>

#include "engine/records/almanac_file.h"

namespace nimbry {

/// What a column measures: it decides which numbers mean "no data".
enum class AlmanacKind { temperature, humidity, barometer, rain_rate, gust, direction };

/// True for the marks of a day without a reading: the records' reset values as the column of that kind shows them in
/// any unit. A real 999 mB is no mark.
[[nodiscard]] bool is_no_data(AlmanacKind kind, double value);

/// The row with the greatest (least) value of a column; of equal ones the last. Nothing when no row has a reading.
[[nodiscard]] const AlmanacRow* greatest(const Almanac& almanac, AlmanacColumn column, AlmanacKind kind);
[[nodiscard]] const AlmanacRow* least(const Almanac& almanac, AlmanacColumn column, AlmanacKind kind);

/// The plain arithmetic mean of all readings of the columns together, rounded to one decimal; nothing when there is
/// none. A bearing is averaged like any number: 350 and 10 give 180.
[[nodiscard]] std::optional<double> mean(const Almanac& almanac, std::initializer_list<AlmanacColumn> columns,
                                         AlmanacKind kind);

/// When an extreme happened: "HH:MM:SS" and "DD MMMM". A moment after the day's end belongs to the calendar day before
/// the row's date. Where the row's date or time is none: "* Invalid time or date *" and " ?? ".
struct Moment {
    std::string time, date;
};
[[nodiscard]] Moment moment_of(const AlmanacRow& row, const std::string& time, DayEnd day_end, int year);

/// The row's date as "DD MMMM", `days_back` days earlier; " ?? " where it is none.
[[nodiscard]] std::string row_date(const AlmanacRow& row, int year, int days_back = 0);

}  // namespace nimbry
