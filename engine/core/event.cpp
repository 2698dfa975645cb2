#include "engine/core/event.h"

#include <optional>
#include <utility>

#include "engine/core/exits.h"
#include "engine/core/run_time_error.h"

namespace nimbry {

void run_event(Copy& copy, std::string_view tag, const std::function<void()>& work) {
    if (copy.state.run.ProgramClosing || copy.state.run.HaveError) return;
    std::optional<UnrecoverableError> failure;
    try {
        tagged(tag, work);
    } catch (const UnrecoverableError& error) {
        failure = error;  // reported outside: nothing may wait inside a handler
    }
    if (failure) report_unrecoverable(copy, *failure);
}

void start_event(Copy& copy, std::string tag, std::function<void()> work) {
    copy.ports.pauses.start([&copy, tag = std::move(tag), work = std::move(work)] { run_event(copy, tag, work); });
}

}  // namespace nimbry
