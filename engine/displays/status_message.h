#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// TimDisplay: the small status window (`NimbryDisplay`) has been shown long enough.
void close_status_message(Copy& copy);

}  // namespace nimbry
