#include "engine/records/changeover.h"

namespace nimbry {

void MailChangeover(Copy&) {}

}  // namespace nimbry
