#include "engine/records/record_step.h"

#include "engine/core/run_time_error.h"

namespace nimbry {

void record_step(Copy& copy, const std::function<void()>& step) {
    try {
        step();
        return;
    } catch (const RunTimeError&) {
        if (copy.state.run.DuplicateError) throw;
        copy.state.run.DuplicateError = true;
    }
    copy.ports.pauses.pause(std::chrono::seconds{2});
}

}  // namespace nimbry
