#include "engine/network/sync_progress.h"

#include "engine/core/copy.h"

namespace nimbry {

void open_sync_window(Copy& copy) {
    SyncProgress& progress = copy.state.network.frmSync;
    progress = {};
    progress.open = true;
    copy.ports.notices.show_window("frmSync");
}

void sync_line(Copy& copy, std::string_view line) {
    copy.state.network.frmSync.Text1 += std::string(line) + "\r\n";
    if (!line.empty()) copy.ports.notices.progress(std::string(line));
}

void close_sync_window(SyncProgress& progress) {
    progress = {};
}

}  // namespace nimbry
