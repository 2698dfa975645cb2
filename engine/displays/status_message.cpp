#include "engine/displays/status_message.h"

#include "engine/core/copy.h"

namespace nimbry {

void show_status_message(Copy& copy, std::string_view text) {
    copy.state.status_message = {true, std::string(text)};
    copy.timers.start(TimerId::TimDisplay, copy.ports.clock.monotonic());
    copy.ports.notices.show_window("NimbryDisplay");
}

void close_status_message(Copy& copy) {
    copy.timers.stop(TimerId::TimDisplay);
    copy.state.status_message.open = false;
}

}  // namespace nimbry
