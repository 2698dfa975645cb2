#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// timWU: looks whether the weather services are due. Nothing in a client.
void weather_services(Copy& copy);

/// Tells Weather Underground, Hamweather and APRS, as far as they are on; in a forced run those that have a user. Put
/// off with `revisitwu` while a changeover runs. Nothing in a client. May wait.
void wunderground(Copy& copy);

}  // namespace nimbry
