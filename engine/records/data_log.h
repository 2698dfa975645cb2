#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// TimLog: once a minute, looks whether a line of the weather log is due. May wait.
void weather_log_minute(Copy& copy);

}  // namespace nimbry
