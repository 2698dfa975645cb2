#pragma once

#include <string>

namespace nimbry {

/// The extremes of the weather day, in base units whatever the user has selected: degrees C, percent, mb, metres per
/// second, mm per hour. Singles: they are stored, printed and compared as singles. A time is "HH:MM", empty until one
/// is set.
///
/// A number that still holds its reset value has seen no reading. A reset leaves the times as they are.
struct DayExtremes {
    float maxtemp = -999, mintemp = 999;      ///< outdoor temperature
    float maxhum = -999, minhum = 999;        ///< outdoor humidity
    float maxrain = -999;                     ///< peak rain rate
    float maxbar = -999, minbar = 9999;       ///< barometer
    float maxwind = -999;                     ///< gust
    float maxdew = -999, mindew = 999;        ///< dew point
    float maxintemp = -999, minintemp = 999;  ///< indoor temperature
    float minwc = 999;                        ///< wind chill
    float maxhi = -999;                       ///< heat index

    std::string maxtemptime, mintemptime, maxhumtime, minhumtime, maxraintime, maxbartime, minbartime, maxwindtime;
    std::string maxdewtime, mindewtime, maxintemptime, minintemptime, minwctime, maxhitime;
    std::string maxwindir;  ///< bearing of the highest gust with the degree sign ("225°"), empty before the first

    /// Puts every number back to its reset value.
    void reset_values();

    /// True when one of the eight outdoor records has seen no reading: such a day is not saved. Dew point, chill, heat
    /// index and the indoor records do not count.
    [[nodiscard]] bool outdoor_record_missing() const;
};

/// What the day's file holds besides the stamp and the extremes.
struct TodayRecord {
    DayExtremes extremes;
    float raintoday = 0;   ///< mm since the changeover
    int DaySinceRain = 0;  ///< whole days without rain
    float LastRain = 0;    ///< amount of the most recent day with rain, in the rain unit of that day
};

/// What yesterday's file holds besides the stamp and the extremes.
struct YesterdayRecord {
    DayExtremes extremes;
    float raintoday = 0;     ///< mm of the whole day
    float rainatchange = 0;  ///< the station's counter at the changeover
};

}  // namespace nimbry
