#pragma once

#include <string>

#include "engine/core/weather_state.h"
#include "engine/ports/files.h"

namespace nimbry {

/// What a tag may look at, and the one thing that it may change.
struct TagView {
    const WeatherState& state;
    const Files& files;      ///< one tag prints a file of the user's
    std::string& mail_body;  ///< the heading of an alarm mail goes straight into it
};

}  // namespace nimbry
