#pragma once

#include <deque>

#include "engine/ports/clock.h"
#include "engine/station/train_writer.h"
#include "programs/nimbry-station/reading.h"

namespace nimbry::simulator {

/// What the station's display unit remembers and works out from what its sensors say: the rain counter, the barometer's
/// trend and forecast, the wind chill, and its records with the moments they were made.
class Memory {
public:
    /// One extreme and when it was made.
    struct Record {
        double value = 0;
        double direction = 0;  ///< of a gust; 0 for other readings
        CivilTime made{};
    };

    /// Takes the readings of the sensors at a moment, which must not lie before the last one. Rain has fallen at the
    /// rate of `values` since the last call. The first call begins the records. `clock` is what the station's own clock
    /// shows then, which somebody may have turned back: it dates the records and measures nothing.
    void live(const Values& values, CivilTime moment, CivilTime clock);

    /// Writes what is remembered over the readings that the sensors do not give.
    void recall(Values& values) const;

    /// The counter stands at this many mm from now on, 0 to 9999.
    void set_rain_total(double mm) { rain_mm_ = mm; }

    /// The counter begins again at 0.
    void reset_rain(CivilTime clock);

    /// The records begin again with these readings.
    void reset_records(const Values& values, CivilTime clock);

    [[nodiscard]] const Record& high_temperature() const { return high_temperature_; }
    [[nodiscard]] const Record& low_temperature() const { return low_temperature_; }
    [[nodiscard]] const Record& high_humidity() const { return high_humidity_; }
    [[nodiscard]] const Record& low_humidity() const { return low_humidity_; }
    [[nodiscard]] const Record& gust() const { return gust_; }
    [[nodiscard]] CivilTime rain_reset() const { return rain_reset_; }

private:
    struct Glass {
        CivilTime read;
        double hpa;
    };

    bool begun_ = false;
    CivilTime last_{};
    double rain_mm_ = 0;
    CivilTime rain_reset_{};
    Record high_temperature_, low_temperature_, high_humidity_, low_humidity_, gust_;
    std::deque<Glass> glass_;  ///< the barometer of the last three hours, a reading every ten minutes
    double hpa_ = 0;
    double chill_ = 0;
};

/// The station's own wind chill, degrees C, of air at temp_c (any) and wind_ms (m/s); the air's own temperature in wind
/// under 1.8 m/s and above 33 degrees, where the formula has no meaning. Siple and Passel 1945 in its metric form,
/// constants as given.
///   station_chill_c(0, 10) = -14.65   station_chill_c(10, 5) = 4.20   station_chill_c(-10, 1) = -10
[[nodiscard]] double station_chill_c(double temp_c, double wind_ms);

/// Trend digit of a change of the barometer over three hours, hPa: 1 rising by 1 or more, 4 falling by 1 or more,
/// else 2.
[[nodiscard]] int trend_digit(double change_hpa);

/// Forecast digit of a barometer (hPa) and its change over three hours: 8 rain or snow, 2 cloudy, 4 partly cloudy, 1
/// sunny.
[[nodiscard]] int outlook_digit(double hpa, double change_hpa);

}  // namespace nimbry::simulator
