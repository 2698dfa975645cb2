#include "engine/network/first_weather_day.h"

#include "engine/derived/number_text.h"
#include "engine/records/changeover.h"

namespace nimbry {

namespace {

using std::chrono::minutes;

unsigned day_of(CivilTime time) {
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(time));
    return static_cast<unsigned>(date.day());
}

bool on_first_weather_day(const MainSettings& settings, CivilTime now) {
    if (!settings.tnineam) return day_of(now) == 1;
    const minutes since_change = settings.AddOneHour ? minutes{-600} : minutes{-540};
    const minutes rest_of_day = settings.AddOneHour ? minutes{840} : minutes{900};
    return (day_of(now) == 2 && day_of(now + since_change) == 1) ||
           (day_of(now) == 1 && day_of(now + rest_of_day) == 2);
}

/// The latest change of the weather day that is not still to come, at the full hour.
CivilTime latest_changeover(const MainSettings& settings, CivilTime now) {
    const CivilTime today = changeover_instant(settings, now) - std::chrono::seconds{1};
    return today <= now ? today : today - std::chrono::days{1};
}

}  // namespace

bool almanac_may_be_archived(const MainSettings& settings, CivilTime now) {
    if (on_first_weather_day(settings, now)) return true;
    const int roll = whole_number(settings.alRoll);
    if (roll == 5) return false;
    return day_of(latest_changeover(settings, now) - std::chrono::seconds{1} + minutes{roll}) == 1;
}

}  // namespace nimbry
