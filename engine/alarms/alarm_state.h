#pragma once

#include <optional>
#include <string>

#include "engine/alarms/alarms_dialog.h"

namespace nimbry {

/// A gust as it was shown at the moment when it raised the wind alarm, for the mail that tells of it.
struct AlarmGust {
    std::string text;    ///< as its box shows it, without outer blanks: "88.6 km/h" or "Calm"
    std::string number;  ///< its number in the wind unit; "0" when calm
    double ms = 0;       ///< m/s, as sent
};

/// The alarms: what they go by, and what they have raised since the last save of the extremes.
struct AlarmState {
    AlarmsDialog frmAlarms;         ///< thresholds and switches in force: the alarm dialog's committed values
    bool AlarmCondition = false;    ///< an alarm fired since the last save
    std::string AlarmReason;        ///< the running sentence of what fired (alarm_checks.h)
    std::optional<AlarmGust> gust;  ///< of the last wind alarm of a train since the last save
    bool AlarmMailSent = false;     ///< an alarm mail has gone out; cleared at every seventh save
};

}  // namespace nimbry
