#include "engine/publish/last_run.h"

#include <utility>

namespace nimbry {

void note_run(Copy& copy, LastRun& run, std::string result) {
    run.end = copy.ports.clock.computer_time();
    run.result = std::move(result);
    ++run.runs;
}

}  // namespace nimbry
