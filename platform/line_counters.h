#pragma once

#include <optional>
#include <vector>

#include "engine/ports/serial_line.h"

namespace nimbry::platform {

/// What a serial driver has counted since the machine started.
struct LineCounters {
    int framing = 0;
    int overrun = 0;         ///< the hardware lost bytes
    int buffer_overrun = 0;  ///< the driver's buffer overflowed
};

/// Reads a driver's counters; nothing where the driver keeps none (a pseudo-terminal, many USB adapters).
[[nodiscard]] std::optional<LineCounters> read_counters(int descriptor);

/// The faults that a driver counted between two looks, each kind once.
[[nodiscard]] std::vector<LineFault> faults_between(const LineCounters& before, const LineCounters& after);

}  // namespace nimbry::platform
