#include "engine/displays/status_message.h"

namespace nimbry {

void close_status_message(Copy&) {}

}  // namespace nimbry
