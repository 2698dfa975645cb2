#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Refreshes the texts of sunrise, sunset and twilight for the station's date and the location entered.
void refresh_sun_texts(Copy& copy);

}  // namespace nimbry
