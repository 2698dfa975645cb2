#include "engine/publish/ftp_debug.h"

namespace nimbry {

void add_to_debug_window(WeatherState& state, std::string_view text) {
    if (!state.menu.mnuFTPdebug.checked) return;
    std::string& shown = state.publish.upload.debug_text;
    shown += text;
    if (shown.size() <= debug_text_kept) return;
    const std::size_t end_of_line = shown.find('\n', shown.size() - debug_text_kept - 1);
    shown.erase(0, end_of_line == std::string::npos ? shown.size() - debug_text_kept : end_of_line + 1);
}

void clear_debug_window(WeatherState& state) {
    state.publish.upload.debug_text.clear();
}

void response_event(Copy& copy, const FtpExchange& exchange) {
    add_to_debug_window(copy.state, exchange.command + "\r\n" + exchange.reply + "\r\n");
    if (!copy.state.publish.NimbryFTPSetup.chkLogResponses) return;
    copy.ports.files.append(std::string(ftp_log_file), exchange.command + " " + exchange.reply + "\r\n");
}

}  // namespace nimbry
