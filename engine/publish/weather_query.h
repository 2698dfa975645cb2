#pragma once

#include <span>
#include <string>

#include "engine/core/weather_state.h"

namespace nimbry {

/// A service that takes the weather in the query of a web request.
struct WeatherService {
    const char* name;              ///< as texts call it
    const char* host;              ///< where it takes reports
    const char* path;              ///< up to the user
    bool InternetDialog::*active;  ///< reports go by schedule
    std::string InternetDialog::*user;
    std::string InternetDialog::*pass;
    std::string InternetDialog::*own_host;  ///< the user's choice instead of `host`
    Box MainMenu::*log_switch;              ///< its events go to the program log
};

[[nodiscard]] const WeatherService& weather_underground();
[[nodiscard]] const WeatherService& hamweather();

/// Both, in the order in which they are told.
[[nodiscard]] std::span<const WeatherService* const> services_by_query();

/// What both are told, worked out once for a report: "&dateutc=2026-10-21 03:05:07&winddir=098&windspeedmph=007..." and
/// so on. Values stand as they are; what cannot travel is escaped at the door (ports/transfers.h).
///
///   &dateutc        UTC, with a blank
///   &winddir        average direction, three digits; left out when it is calm or not known
///   &windspeedmph   average, whole miles, three digits; "0" when not known
///   &windgustmph    peak since the last report, one decimal, three characters at least; "0" when not known
///   &tempf          empty when not known
///   &rainin         rain of the last hour; "0.00" in the first report, empty in a forced one
///   &baromin        left out when not known
///   &dewptf, &humidity   both left out when the humidity is not known
///   &weather, &clouds    empty
///   &softwaretype
///
/// The peak gust begins anew, and the rain's ring goes on by one interval unless the report is forced.
[[nodiscard]] std::string weather_items(WeatherState& state, CivilTime utc);

/// The whole request: "http://host/path?...ID=user&PASSWORD=pass" and the items.
[[nodiscard]] std::string weather_request(const WeatherService& service, const InternetDialog& settings,
                                          const std::string& items);

/// The host that a request goes to, without scheme and port.
[[nodiscard]] std::string host_of(const WeatherService& service, const InternetDialog& settings);

/// Minutes between two reports, 1 or more.
[[nodiscard]] int report_interval(const InternetDialog& settings);

}  // namespace nimbry
