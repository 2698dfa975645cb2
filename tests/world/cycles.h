#pragma once

#include "engine/core/process_cycle.h"
#include "tests/world/world.h"

namespace nimbry::test {

/// Runs one cycle, as the end of a train would, without a train.
inline void cycle(World& world) {
    world.act([&] { processcycle(world.copy()); });
}

inline void cycles(World& world, int count) {
    for (int i = 0; i < count; ++i) cycle(world);
}

}  // namespace nimbry::test
