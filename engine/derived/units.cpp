#include "engine/derived/units.h"

namespace nimbry {

Units units_from(const MainSettings&) { return {}; }

}  // namespace nimbry
