#include "engine/alarms/alarm_checks.h"

namespace nimbry {

bool check_high_wind(Copy& /*copy*/) {
    return false;
}
void keep_wind_of_alarm(Copy& /*copy*/) {}
void check_humidity(Copy& /*copy*/) {}
void check_outdoor_temperature(Copy& /*copy*/) {}
void check_indoor_temperature(Copy& /*copy*/) {}
void check_barometer(Copy& /*copy*/) {}
void check_dew_point(Copy& /*copy*/) {}
void check_peak_rain(Copy& /*copy*/) {}
void check_rain_amount(Copy& /*copy*/) {}

}  // namespace nimbry
