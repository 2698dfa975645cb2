#pragma once

#include "engine/core/ini_file.h"
#include "engine/core/ports.h"
#include "engine/core/program_log.h"
#include "engine/core/timers.h"
#include "engine/core/weather_state.h"

namespace nimbry {

/// One running copy as its routines see it: the state, the ports, and the few helpers built on them. The Engine owns
/// all of it (core/engine.h). Routines that steer the whole take a Copy; a formula or a format takes the values it
/// needs.
struct Copy {
    WeatherState& state;
    Ports& ports;
    clsIniFile& ini;
    ProgramLog& log;
    Timers& timers;
};

}  // namespace nimbry
