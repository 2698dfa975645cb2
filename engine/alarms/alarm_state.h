#pragma once

#include <string>

namespace nimbry {

/// What the threshold alarms have raised since the last save of the extremes.
struct AlarmState {
    bool AlarmCondition = false;  ///< an alarm fired since the last save
    std::string AlarmReason;      ///< the running sentence of what fired
    bool AlarmMailSent = false;   ///< an alarm mail has gone out; cleared at every seventh save
    bool chkAlarmMail = false;    ///< key `fAMail`: alarms are mailed
};

}  // namespace nimbry
