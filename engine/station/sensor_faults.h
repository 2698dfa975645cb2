#pragma once

#include <optional>

#include "engine/core/copy.h"
#include "engine/displays/main_panel.h"
#include "engine/station/sensor_state.h"

namespace nimbry {

// Whether a reading may be used. Each sensor has one test; its conditions are bits, marks and limits of the digits
// (docs/formats/stream.md).
//
// A test has two strikes, so that one damaged frame only costs one reading:
//   sound                              the fault flag falls; the reading is used
//   faulty, flag clear                 the flag rises; the reading is left out and nothing else happens
//   faulty, flag set                   the flag falls; `sensorsok` false: log line, fault window, boxes red and "Error"
// So a lasting fault is acted on in every second frame.

/// Which wind group a test or a routine looks at.
enum class WindSource { train, lone };

/// True when the reading of a sensor may be used: no fault in the frame in hand. The first question in a frame is the
/// test and acts as above; asked again in the same frame it only repeats its answer. Before the first cycle has
/// passed, and for digits that have never come, the answer is true and nothing changes.
///
/// The outdoor humidity sensor of a cold climate gives up in the frost: below -9.0 degrees C (of the train before) its
/// fault is neither logged nor shown in a window while only such faults are silenced (`CCPop`).
///
/// Throws RunTimeError when the log cannot be written.
bool sensor_sound(Copy& copy, Sensor sensor, WindSource source = WindSource::train);

/// True when neither the train's wind nor the last lone group's, if there was one, bears a fault: what the records ask
/// before they take a wind chill.
bool both_winds_sound(Copy& copy);

/// A train with a possible date begins: every sensor will be tested afresh.
void begin_train(SensorFaults& faults);

/// A lone wind group begins: the wind will be tested afresh.
void begin_lone_wind(SensorFaults& faults);

/// Forgets which faults have been logged, so that lasting ones are logged again.
void clear_once_flags(SensorFaults& faults);

/// Turns the fault red of every reading's box back to black. The word "Error" stays until the next sound reading.
void clear_fault_colours(MainPanel& panel);

}  // namespace nimbry
