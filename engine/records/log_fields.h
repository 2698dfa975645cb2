#pragma once

#include <string>

namespace nimbry {

/// The columns of the weather log, in their order and in the units of display. Each is text, ready to be joined by
/// commas: no blanks around it, a point as decimal mark. The groups fill them as they decode; a faulty sensor's column
/// keeps its last text, except the two wind speeds, which read "0".
struct LogFields {
    std::string logdate;     ///< day of the month, "5"
    std::string logmonth;    ///< "Oct"
    std::string logtime;     ///< "HH:MM"
    std::string logostemp;   ///< "+9.8"
    std::string logoshum;    ///< percent; "100" when the sensor is over its range
    std::string logdew;      ///< "-0.6"
    std::string logchill;    ///< "+6"
    std::string loghind;     ///< "+35", or "n.a." below 20 degrees C
    std::string logwindas;   ///< average; "0" when calm
    std::string logwindad;   ///< degrees, "98"
    std::string logwindgs;   ///< gust; "0" when calm
    std::string logwindgdr;  ///< degrees
    std::string logbaro;
    std::string logbtrend;   ///< "Rising", "Steady" or "Falling"
    std::string lograinr;    ///< rate, per hour
    std::string lograintot;  ///< the station's counter
    std::string logintemp;   ///< "+21.4"
    std::string loginhum;    ///< percent
};

}  // namespace nimbry
