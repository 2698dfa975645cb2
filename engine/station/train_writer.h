#pragma once

#include <cstdint>

#include "engine/ports/bytes.h"
#include "engine/ports/clock.h"

namespace nimbry {

// The station's side of the line: readings in, bytes out, by the same tables that the decoder reads (group_layout.h).
// The simulated station and the tests speak through it; it can say everything that the real one can, and the nonsense
// too.
//
// A number that its digits cannot hold is cut to the largest one they can, a negative one without a sign to 0.

/// When one of the station's own records was made.
struct RecordMoment {
    int hour = 0, minute = 0, day = 1, month = 1;
};

/// Everything one train says.
struct StationReadings {
    /// The station's clock. Any digits can be sent, an impossible date too; month 0 to 15.
    struct Moment {
        int second = 0, minute = 0, hour = 0, day = 1, month = 1;
    } clock;

    /// Percent, 0 to 99 (99 is the most that two digits hold; a wet sensor reads 97 and says "over range").
    struct Humidity {
        int indoor = 45, outdoor = 54;
        bool indoor_fault = false, outdoor_fault = false;  ///< the mark "E" instead of the tens
        bool outdoor_over_range = false;
        int high = 97, low = 23;  ///< the station's records
        bool high_over_range = false;
        RecordMoment high_at{6, 15, 3, 7}, low_at{14, 32, 21, 1};
    } humidity;

    /// Degrees C, to a tenth, -79.9 to 79.9. The sign is sent apart from the digits: -0.0 and -0.04 both give "-0.0".
    struct Temperature {
        double indoor = 21.5, outdoor = 12.3;
        bool indoor_fault = false, outdoor_fault = false;  ///< the mark "E" instead of the units
        double high = 38.4, low = -12.6;                   ///< the station's outdoor records
        RecordMoment high_at{14, 55, 17, 2}, low_at{5, 11, 9, 7};
    } temperature;

    struct Barometer {
        int hpa = 1013;   ///< 0 to 9999
        int trend = 2;    ///< 1 rising, 2 steady, 4 falling; 0 to 15 can be sent
        int outlook = 1;  ///< 1 sunny, 2 cloudy, 4 partly cloudy, 8 rain or snow; 0 to 15 can be sent
    } barometer;

    struct Rain {
        int rate_mm = 0;     ///< mm per hour, 0 to 1599
        int total_mm = 123;  ///< the counter, 0 to 9999
        RecordMoment reset_at{9, 30, 5, 4};
        bool fault = false;
    } rain;

    struct Wind {
        double gust_ms = 4.2, average_ms = 3.1;             ///< m/s, to a tenth, 0 to 99.9
        int gust_direction = 225, average_direction = 200;  ///< degrees, 0 to 999 can be sent
        double record_ms = 31.4;
        int record_direction = 270;
        RecordMoment record_at{16, 47, 28, 9};
        double chill_c = 9;  ///< whole degrees C, -99 to 99; -0.0 sends the sign with "00"
        bool low_battery = false;
        int fault_bits = 0;  ///< 0 sound; 4, 8 or 12: wind sensor fault
    } wind;
};

/// The station's clock for a date-time (its year is not sent).
[[nodiscard]] StationReadings::Moment station_moment(CivilTime time);

/// A train of all five groups, 141 bytes, with right checksums.
[[nodiscard]] Bytes write_train(const StationReadings& readings);

/// A lone wind group, 27 bytes, with its right checksum.
[[nodiscard]] Bytes write_lone_wind(const StationReadings& readings);

/// Overwrites one digit of the group `tag` in a train or in a lone wind group, with a hexadecimal value 0 to 15. The
/// checksum stays as it was: seal() mends it. Nothing happens when the frame has no such group or the group no such
/// digit.
void set_digit(Bytes& frame, std::uint8_t tag, int place, int value);

/// Gives every group of a train, or a lone wind group, its right checksum.
void seal(Bytes& frame);

/// Makes the checksum of the group `tag` wrong, whatever it was.
void spoil_checksum(Bytes& frame, std::uint8_t tag);

}  // namespace nimbry
