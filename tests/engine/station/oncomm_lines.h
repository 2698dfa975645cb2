#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/world/live_line.h"

namespace nimbry {

using namespace std::chrono_literals;
using State = LineFramer::State;
using test::BareCopy;
using test::LiveLine;

/// Readings of the moment that the virtual computer clock shows, so that no clock is wrong.
inline StationReadings readings() {
    StationReadings r;
    r.clock = {0, 0, 14, 5, 10};
    return r;
}

/// A copy that has had its first train.
struct StartedLine : LiveLine {
    StartedLine() {
        deliver(write_train(readings()));
        pauses.pause(2s);
    }
};

/// A flag that keeps the line's data off.
struct HoldOff {
    std::string what;
    void (*set)(WeatherState&, bool);
    bool line_lives;  ///< its events clear ccheckflagb
};

inline const std::vector<HoldOff> hold_offs = {
    {"the splash", [](WeatherState& s, bool on) { s.comm.splashing = on; }, false},
    {"a setup dialog", [](WeatherState& s, bool on) { s.comm.initflag = on; }, false},
    {"a changeover", [](WeatherState& s, bool on) { on ? s.comm.changebusy.set() : s.comm.changebusy.clear(); }, true},
};

}  // namespace nimbry
