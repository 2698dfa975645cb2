#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Once a cycle: ends the weather day when its hour has come. `changebusy` is set while it does. May wait.
void MailChangeover(Copy& copy);

}  // namespace nimbry
