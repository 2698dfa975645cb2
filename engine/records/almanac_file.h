#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "engine/records/day_end.h"

namespace nimbry {

// The bytes of an almanac, `nbextreme.log` or a monthly archive of it: a head, then one comma-separated row for each
// weather day. docs/formats/almanac.md shows them.

/// The almanac of the month in progress.
inline constexpr std::string_view almanac_log = "nbextreme.log";

/// The columns of a row, in their order.
enum class AlmanacColumn : std::size_t {
    date,
    month,
    max_temperature,
    max_temperature_time,
    min_temperature,
    min_temperature_time,
    max_humidity,
    max_humidity_time,
    min_humidity,
    min_humidity_time,
    max_dew_point,
    max_dew_point_time,
    min_dew_point,
    min_dew_point_time,
    max_indoor,
    max_indoor_time,
    min_indoor,
    min_indoor_time,
    min_chill,
    min_chill_time,
    max_heat_index,
    max_heat_index_time,
    max_rain_rate,
    max_rain_rate_time,
    max_barometer,
    max_barometer_time,
    min_barometer,
    min_barometer_time,
    max_gust,
    max_gust_time,
    max_gust_direction,
    rain,
    days_since_rain,
    last_rain,
};
inline constexpr std::size_t almanac_columns = 34;

/// One row's fields as they stand.
struct AlmanacRow {
    std::array<std::string, almanac_columns> fields;
    [[nodiscard]] const std::string& operator[](AlmanacColumn column) const {
        return fields[static_cast<std::size_t>(column)];
    }
    /// The field after this one: an extreme's time.
    [[nodiscard]] const std::string& after(AlmanacColumn column) const {
        return fields[static_cast<std::size_t>(column) + 1];
    }
};

/// An almanac as it was read.
struct Almanac {
    DayEnd day_end = DayEnd::nine;
    std::vector<AlmanacRow> rows;  ///< at most `most_rows`, in file order
    static constexpr std::size_t most_rows = 33;
};

/// Reads an almanac. The head's "Midnight", "9.00am" or "10.00am" gives the day's end; a head that names none:
/// `fallback`. A line that begins with a digit is a row. Throws RunTimeError (index) for a row of fewer than 34 fields.
[[nodiscard]] Almanac read_almanac(std::string_view text, DayEnd fallback);

/// The lines that begin with a digit.
[[nodiscard]] int count_almanac_rows(std::string_view text);

/// How many bytes of an almanac can be built on: all, but for a last line without its end that is no whole row. A power
/// cut can leave the beginning of a row, and the next one must not be joined to it.
[[nodiscard]] std::size_t sound_length(std::string_view text);

/// The rain of the rows, in the unit of the rows, which the file does not name.
struct AlmanacRain {
    int days = 0;      ///< rows with a total above 0
    double total = 0;  ///< their sum, not rounded
};
/// Adds up the rain of an almanac. For a display, so a damaged row only counts for nothing, and so does
/// an amount beyond a thousand million.
[[nodiscard]] AlmanacRain almanac_rain(std::string_view text);

}  // namespace nimbry
