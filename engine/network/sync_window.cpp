#include "engine/network/sync_window.h"

#include "engine/core/copy.h"

namespace nimbry {

void open_sync_window(Copy& copy) {
    SyncWindow& window = copy.state.network.frmSync;
    window = {};
    window.open = true;
    copy.ports.notices.show_window("frmSync");
}

void sync_line(Copy& copy, std::string_view line) {
    copy.state.network.frmSync.Text1 += std::string(line) + "\r\n";
    if (!line.empty()) copy.ports.notices.progress(std::string(line));
}

void close_sync_window(SyncWindow& window) {
    window = {};
}

}  // namespace nimbry
