#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// The thresholds that a person sets, each compared with its reading at the moment the reading is decoded: after its
// sensor was found sound, and in the order of the decoding. Both sides of a comparison are singles in base units, and
// equality is quiet (but for the dew point that reaches the temperature). A threshold whose box is not checked is not
// looked at.
//
// An alarm brings the main window back and disables `mnuHide`, plays `Nimbry.WAV` if that is switched on, sets
// `AlarmCondition`, tells of itself in `AlarmReason`, colours its reading and starts `TimAlarm`. It fires at every
// decoding while the breach lasts; nothing latches it.
//
// The sentence, kept on purpose: an alarm that does not stand in it yet replaces it, one that does is appended to it
// with " and ". So of several alarms in a train the last stands alone, and a lasting one stands there once for each of
// its decodings. Saves of the extremes empty it.

/// Asked in group CF and in a lone wind group, before the gust is shown: `rdatwindgs`, m/s. True when the alarm fired.
bool check_high_wind(Copy& copy);

/// Asked in group CF after the gust was shown, if check_high_wind() fired on this train: keeps the gust's texts of this
/// moment for the alarm mail.
void keep_wind_of_alarm(Copy& copy);

/// Asked in group 8F after the outdoor humidity was shown: `rdathumidity`, percent as read (97 stays 97 when it means
/// 100); high, then low.
void check_humidity(Copy& copy);

/// Asked in group 9F before the temperature is shown: `rawostemp`, degrees C; high, then low.
void check_outdoor_temperature(Copy& copy);

/// Asked in group 9F before the temperature is shown: `rawintemp`, degrees C; high, then low.
void check_indoor_temperature(Copy& copy);

/// Asked in group AF before the pressure is shown: `BaroValue`, hPa; high, then low.
void check_barometer(Copy& copy);

/// Asked in group AF before the dew point is shown: `dewnative`, degrees C; high, then low, then whether it is at or
/// above the outdoor temperature.
void check_dew_point(Copy& copy);

/// Asked in group BF before the rate is shown: `rdatpeakrain`, mm per hour.
void check_peak_rain(Copy& copy);

/// Asked in `extremes` after the rain of the day was shown, while the rain sensor is sound: `raintoday`, mm.
void check_rain_amount(Copy& copy);

}  // namespace nimbry
