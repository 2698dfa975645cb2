#include "engine/core/event.h"

#include <utility>

#include "engine/core/exits.h"
#include "engine/core/run_time_error.h"

namespace nimbry {

void run_event(Copy& copy, std::string_view tag, const std::function<void()>& work) {
    if (copy.state.run.ProgramClosing || copy.state.run.HaveError) return;
    try {
        tagged(tag, work);
    } catch (const UnrecoverableError& error) {
        report_unrecoverable(copy, error);
    }
}

void start_event(Copy& copy, std::string tag, std::function<void()> work) {
    copy.ports.pauses.start([&copy, tag = std::move(tag), work = std::move(work)] { run_event(copy, tag, work); });
}

}  // namespace nimbry
