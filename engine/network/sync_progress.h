#pragma once

#include <string>
#include <string_view>

namespace nimbry {

struct Copy;

/// What the window shows in which a client tells how the fetching of its server's files goes (`frmSync`): one text,
/// read-only, that stands at its end.
struct SyncProgress {
    static constexpr std::string_view title = "Nimbry Client/Server Synchronization";

    bool open = false;
    std::string Text1;           ///< lines, each with its CR LF
    bool closes_itself = false;  ///< the fetching has come to its end: the next cycle closes the window
};

/// Empties the text and shows the window.
void open_sync_window(Copy& copy);

/// Adds a line to the text; without a window it is a line on standard error.
void sync_line(Copy& copy, std::string_view line);

/// Empties the text and closes the window.
void close_sync_window(SyncProgress& progress);

}  // namespace nimbry
