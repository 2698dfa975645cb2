#pragma once

#include <string>
#include <string_view>

namespace nimbry {

struct Copy;

/// The small status window (`NimbryDisplay`).
struct StatusMessage {
    bool open = false;
    std::string text;
};

/// Shows a status message for 3.9 seconds; one that is showing is replaced and its time begins anew.
void show_status_message(Copy& copy, std::string_view text);

/// TimDisplay: the status window has been shown long enough.
void close_status_message(Copy& copy);

}  // namespace nimbry
