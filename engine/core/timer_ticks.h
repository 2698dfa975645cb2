#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Does what a timer's tick is for, by calling the routine of its room. May wait.
void timer_tick(Copy& copy, TimerId id);

}  // namespace nimbry
