#pragma once

#include <string_view>
#include <vector>

#include "engine/core/copy.h"

namespace nimbry {

/// The sound of an alarm.
inline constexpr std::string_view alarm_sound = "Nimbry.WAV";

/// Takes the thresholds and switches of section `Alarms` into force.
void getalarms(Copy& copy);

/// A save of the extremes ends the interval that `AlarmCondition`, `AlarmReason` and the kept gust live in.
void forget_alarms(AlarmState& alarms);

/// `Command1` of the alarm dialog: the click, then these values come into force and all keys of section `Alarms` are
/// written. A write that fails changes nothing of that.
void accept_alarms(Copy& copy, const AlarmsDialog& values);

/// TimAlarm, once after an alarm: the sound again, if it is still switched on; the readings that are in the alarm's
/// colour get back their own; `mnuHide` can be chosen again. A reading that is still in breach turns red with its next
/// decoding.
void end_alarm(Copy& copy);

/// True for a reading in the colour of an alarm.
[[nodiscard]] bool in_alarm(const Box& reading);

/// The captions of the readings in that colour, in the order of the boxes: "Outdoor Temp.", "Peak Rain Rate" ...; the
/// rain of the day, whose caption is a time, is "Rainfall".
[[nodiscard]] std::vector<std::string_view> readings_in_alarm(const MainPanel& panel);

}  // namespace nimbry
