#include "engine/sun/sun_texts.h"

namespace nimbry {

void refresh_sun_texts(Copy&) {}

}  // namespace nimbry
