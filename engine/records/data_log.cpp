#include "engine/records/data_log.h"

namespace nimbry {

void weather_log_minute(Copy&) {}

}  // namespace nimbry
