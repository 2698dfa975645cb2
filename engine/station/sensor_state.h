#pragma once

#include <optional>

namespace nimbry {

/// The sensors that are tested.
enum class Sensor { wind, outdoor_temperature, outdoor_humidity, indoor_humidity, indoor_temperature, barometer, rain };

/// What is known of one sensor.
struct SensorFault {
    bool raised = false;          ///< the fault flag: the last test saw a fault for the first time in a row
    bool once = false;            ///< its fault has been logged
    bool failed = false;          ///< a fault was reported, and no sound reading has come since
    std::optional<bool> verdict;  ///< of the frame in hand: may the reading be used? Nothing before the frame's test
};

/// The fault tests' memory.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct SensorFaults {
    bool sensorsok = true;  ///< (kept) the last test did not report a fault

    SensorFault pewgerr;   ///< wind, of trains and lone groups alike
    SensorFault peoterr;   ///< outdoor temperature
    SensorFault peoherr;   ///< outdoor humidity
    SensorFault peiherr;   ///< indoor humidity
    SensorFault peiterr;   ///< indoor temperature
    SensorFault pebarerr;  ///< barometer
    SensorFault pernerr;   ///< rain
};

}  // namespace nimbry
