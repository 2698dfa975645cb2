#pragma once

#include <optional>
#include <string>

#include "engine/ports/clock.h"

namespace nimbry {

/// The present moment in UTC, by the computer's clock.
struct UtcTexts {
    std::string stamp;      ///< "YYYY-MM-DD HH:MM:SS"
    std::string time;       ///< "HH:MM:SS"
    std::string date;       ///< "DD MMMM YYYY"
    std::string time_utc;   ///< "HH:MM:SS UTC"
    std::string month_day;  ///< "MMMM DD"
};

/// The current readings as the groups give them. `rdat` is the station's own text, `raw` the metric text with a decimal
/// point; both are texts of digits ("12.3"), without sign unless said. Empty until the first good group.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct Readings {
    // Clock (group 8F)
    std::string rdattime;   ///< "HH:MM:SS"
    std::string rdatday;    ///< day of the month without a leading zero, "5"
    std::string rdatmonth;  ///< "Jan" to "Dec"; empty for a month digit that is none
    /// The station's date-time, in the computer's year; nothing before the first valid one.
    std::optional<CivilTime> dtvar;
    bool HaveValidDate = false;  ///< the last 8F group held a possible date and time
    int YesterDay = 0;           ///< day of the month one minute before dtvar
    UtcTexts utc;

    // Humidity (8F)
    std::string rdathumidity, rdatinhumidity;  ///< percent, as sent (97 stays 97 when it means 100)

    // Temperature (9F)
    std::string rdatotempsign, rdatotemp;  ///< outdoor, "+" or "-" and "12.3", degrees C
    std::string rdatitempsign, rdatitemp;  ///< indoor
    std::string rawostemp;                 ///< outdoor with its sign, "-04.7"
    std::string rawintemp;

    // Barometer (AF)
    std::string rdatbarometer;  ///< whole hectopascals
    char rdatbarotrend = 0;     ///< digit: '1' rising, '2' steady, '4' falling; 0 before the first
    int rdatoutlook = 0;        ///< forecast: 1 sunny, 2 cloudy, 4 partly cloudy, 8 rain or snow
    std::string BaroTrendCode;  ///< "2" rising, "1" steady, "0" falling
    double BaroValue = 0;       ///< hectopascals, of the last sound reading
    std::string BaroInvariant;  ///< the same as text with a point

    // Rain (BF)
    std::string rdatpeakrain;   ///< rate, mm per hour
    std::string rdattotrain;    ///< the station's counter, mm
    double RainRateMm = 0;      ///< mm per hour
    std::string RainTotalText;  ///< the counter as number text
    std::string RainSinceText;  ///< "123 mm of rain since October 5": the counter and the date of its last reset

    // Wind (CF)
    std::string rdatwindgs, rdatwindgd, rdatwindas, rdatwindad;  ///< gust and average: m/s and degrees
    std::string rawwindgs, rawwindas;                            ///< m/s
    std::string MaxGustMs;                                       ///< highest gust since the pages were made last, m/s
    double GustMph = 0, MaxGustMph = 0;
    double GustSpeed = 0, AvgSpeed = 0;  ///< in the wind unit, one decimal
    double PeakGust = 0, MaxAvg = 0;     ///< (kept) running maxima in the wind unit
    double MaxGustToday = 0;             ///< (kept) as well
    double wstempsng = 0;                ///< highest gust of the running graph minute, in the wind unit
    bool HaveWind = false;               ///< a sound wind has been decoded since the start
    int gdirint = 0, adirint = 0;        ///< degrees
    std::string gwcompaf, awcompaf;      ///< "N", "NE", ...
    std::string gwcompas, awcompas;      ///< "North", "North East", ...

    // Records since the station was last reset, as it sends them; empty until the first group that has them
    std::string rawoshi, rawoslo;  ///< outdoor temperature with its sign, degrees C
    std::string rawwindhi;         ///< gust, m/s

    // Derived
    double dewnative = 0, chillnative = 0, hinative = 0;  ///< degrees C, one decimal
    /// The same as texts with sign, "-0.6"; empty before the first, and the heat index below 20 degrees C too. A sign
    /// can stand before 0: it was taken before the rounding.
    std::string DewInvariant, ChillInvariant, HeatInvariant, WetBulbInvariant;
    double Evap = 0;          ///< vapour pressure, hPa, as the dew point left it
    bool ChillValid = false;  ///< (kept) a train has given a wind chill
};

}  // namespace nimbry
