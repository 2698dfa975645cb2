#pragma once

#include "engine/core/weather_state.h"
#include "engine/ports/files.h"

namespace nimbry {

// The two columns of the day's records on the panel, and their six rows in the additional data window.

/// Writes every record of today from `records.day` into its box.
void show_today(WeatherState& state);

/// Writes one group of today's records: for the moment in which one of them moves.
void show_today_temperature(WeatherState& state);
void show_today_dew_point(WeatherState& state);
void show_today_heat_index(WeatherState& state);
void show_today_chill(WeatherState& state);
void show_today_humidity(WeatherState& state);
void show_today_gust(WeatherState& state);
void show_today_rain_rate(WeatherState& state);
void show_today_barometer(WeatherState& state);
void show_today_indoor(WeatherState& state);

/// Empties today's column; the heat index alone says "- No Valid Data -".
void blank_today(WeatherState& state);

/// Writes the fields as they are held, the rain of the day too, into yesterday's column.
void ResYesterday(WeatherState& state);

/// Yesterday's column without a day: "- No Data Available -", and " -- " for its rain.
void show_no_yesterday(WeatherState& state);

/// Yesterday's column after its day was thrown away: "- No data available yet -", and " -- " for its rain.
void show_yesterday_to_come(WeatherState& state);

/// The rain of the month's finished days in the additional data window: the days with rain, and their total. No
/// almanac: "0", and "0 mm". A file that cannot be read counts as none.
void show_monthly_rain(WeatherState& state, const Files& files);

/// The days since rain and the amount of the last rain, in the additional data window.
void show_rain_days(WeatherState& state);

}  // namespace nimbry
