#include "platform/line_counters.h"

#ifdef __linux__
#include <linux/serial.h>
#include <sys/ioctl.h>
#endif

namespace nimbry::platform {

#ifdef __linux__
std::optional<LineCounters> read_counters(int descriptor) {
    serial_icounter_struct counted{};
    if (ioctl(descriptor, TIOCGICOUNT, &counted) != 0) return std::nullopt;
    return LineCounters{counted.frame, counted.overrun, counted.buf_overrun};
}
#else
std::optional<LineCounters> read_counters(int) {
    return std::nullopt;
}
#endif

std::vector<LineFault> faults_between(const LineCounters& before, const LineCounters& after) {
    std::vector<LineFault> faults;
    if (after.framing != before.framing) faults.push_back(LineFault::framing);
    if (after.overrun != before.overrun) faults.push_back(LineFault::overrun);
    if (after.buffer_overrun != before.buffer_overrun) faults.push_back(LineFault::buffer_overrun);
    return faults;
}

}  // namespace nimbry::platform
