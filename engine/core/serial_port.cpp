#include "engine/core/serial_port.h"

namespace nimbry {

void line_lost(Copy& copy) { copy.ports.line.close(); }

}  // namespace nimbry
