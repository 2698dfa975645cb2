#include "engine/publish/perform_upload.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"
#include "engine/displays/additional_window.h"
#include "engine/publish/ftp_debug.h"
#include "engine/publish/ftp_status_text.h"
#include "engine/publish/ftp_watchdog.h"
#include "engine/publish/internet_check.h"
#include "engine/publish/published_files.h"
#include "engine/publish/server_settings.h"
#include "engine/reports/page_names.h"
#include "engine/reports/user_files.h"

namespace nimbry {
namespace {

constexpr Milliseconds before_each_step{50};
// How often what the server has said is looked at during a wait.
constexpr Milliseconds listening_interval{250};
constexpr std::uint16_t usual_port = 21;
constexpr EncryptionWords encryption_words{"explicit", "implicit"};
constexpr const char* list_file = "NBYFiles.txt";

/// One upload. Its steps say whether it goes on.
class Upload {
public:
    explicit Upload(Copy& copy)
        : copy_(copy),
          settings_(copy.state.publish.NimbryFTPSetup),
          state_(copy.state.publish.upload),
          session_(copy.ports.transfers.ftp_session()) {}

    bool run() {
        return !timed_out() && connect() && send_pages() && send_pictures() && send_if_there("wx.wml") &&
               send_summary() && send_if_there("nimbryraw.txt") && send_additional() && send_list() && quit();
    }

private:
    bool connect() {
        const std::string directory = trimmed(settings_.FTPRemDir);
        state_.FtpConnectFailed = state_.FtpConnected = false;
        enable_panel_buttons(copy_.state, false);
        session_->connect({.host = trimmed(settings_.FTPServer),
                           .port = port_of(copy_.state.settings.FTPPort, usual_port),
                           .user = settings_.FTPUser,
                           .password = settings_.FTPPass,
                           .directory = directory,
                           .active = settings_.FTPact,
                           .encryption = encryption_of(settings_.FTPSecurity, encryption_words)});
        if (!wait()) return false;
        const FtpEnd end = session_->end();
        status_event(copy_, end.status, missing_for_ftp(settings_).value_or(end.words));
        stop_watchdog(copy_);
        return state_.FtpConnected;
    }

    bool send(const std::string& local, const std::string& remote) {
        restart_watchdog(copy_);
        copy_.ports.pauses.pause(before_each_step);
        state_.FtpFileDone = state_.FtpTransferError = false;
        add_to_debug_window(copy_.state, "Sending " + remote + "\r\n");
        session_->put(copy_.ports.files.path(local), remote);
        if (!wait()) return false;
        stop_watchdog(copy_);
        if (const std::string fault = session_->end().fault; !fault.empty()) {
            transfer_failure_event(copy_, fault);
            return false;
        }
        state_.FtpFileDone = true;
        return true;
    }

    bool send_if_there(const std::string& name) { return !copy_.ports.files.exists(name) || send(name, name); }

    bool send_pages() {
        for (int n = 0; n < pages_uploaded; ++n) {
            const auto remote = remote_page(settings_.FTPRemoteFile, n);
            const std::string page = finished_page(n);
            if (remote && copy_.ports.files.exists(page) && !send(page, *remote)) return false;
        }
        return true;
    }

    bool send_pictures() {
        copy_.ports.pauses.pause(before_each_step);
        for (const std::string name : {"VidCap.jpg", "VidCap.png"}) {
            const std::string entry = UserFiles(copy_.ports.files).find(name);
            if (entry.empty() || !settings_.ChkEnableFTP || !is_fresh(copy_, entry)) continue;
            if (!send(entry, name)) return false;
        }
        return true;
    }

    bool send_summary() {
        const std::string name = "nimbrysummary.html";
        bool& uploaded = copy_.state.records.summary_uploaded;
        if (uploaded || !settings_.ChkEnableFTP || !is_fresh(copy_, name)) return true;
        if (!send(name, name)) return false;
        uploaded = true;
        return true;
    }

    /// Those that are there, under their bare names.
    bool send_all(const std::vector<std::string>& files) {
        for (const std::string& file : files) {
            if (copy_.ports.files.exists(file) && !send(file, fnamesplit(file))) return false;
        }
        return true;
    }

    bool send_additional() {
        int& uploads = state_.ExtraFileCounter;
        // Kept on purpose: counted from 0, so the first upload has none of them; with 3 it is the second, fifth,
        // eighth.
        if (uploads > std::max(whole_number(settings_.UploadCount), 1)) uploads = 1;
        if (uploads == 1 && !send_all(list_items(settings_.Additional_Files, ','))) return false;
        ++uploads;
        return true;
    }

    bool send_list() {
        Files& files = copy_.ports.files;
        const std::string name = UserFiles(files).find(list_file);
        std::string list;
        if (name.empty() || files.read(name, list) != FileResult::ok) return true;
        std::vector<std::string> lines;
        for (std::string_view rest = list; !rest.empty();)
            if (std::string line = trimmed(take_line(rest)); !line.empty()) lines.push_back(std::move(line));
        if (!send_all(lines)) return false;
        require(files.remove(name));
        return true;
    }

    bool quit() {
        restart_watchdog(copy_);
        copy_.ports.pauses.pause(before_each_step);
        session_->quit();
        if (!wait()) return false;
        stop_watchdog(copy_);
        return true;
    }

    /// Waits for the end of the session's step. False: the watchdog was faster.
    bool wait() {
        const auto over = [this] { return state_.FtpTimedOut || !session_->under_way(); };
        for (bool is_over = false; !is_over;) {
            is_over = copy_.ports.pauses.wait_until(over, listening_interval);
            for (const FtpExchange& exchange : session_->take_exchanges()) response_event(copy_, exchange);
        }
        return !timed_out();
    }

    bool timed_out() {
        if (!std::exchange(state_.FtpTimedOut, false)) return false;
        stop_watchdog(copy_);
        state_.FtpConnectFailed = true;
        return true;
    }

    Copy& copy_;
    const InternetDialog settings_;  // as they were at its beginning
    UploadState& state_;
    std::unique_ptr<FtpSession> session_;
};

void tell_success(Copy& copy) {
    if (copy.state.publish.FtpForced) {
        copy.ports.notices.balloon({.title = "FTP Message",
                                    .text = "Nimbry has successfully uploaded data to\r\n" +
                                            trimmed(copy.state.publish.NimbryFTPSetup.FTPServer),
                                    .icon = "i"});
    }
    if (copy.state.settings.mlogftp) copy.log.event(" FTP Upload success");
    enable_panel_buttons(copy.state, true);
}

}  // namespace

void enable_panel_buttons(WeatherState& state, bool enabled) {
    state.menu.fmb_locked = !enabled;
    for (Box& button : state.menu.fmb) button.enabled = enabled;
    enable_additional(state);
}

void PerformUpload(Copy& copy) {
    add_to_debug_window(copy.state, "Waiting for next FTP upload ....\r\n");
    try {
        if (Upload(copy).run()) tell_success(copy);
    } catch (const RunTimeError& error) {
        UploadState& upload = copy.state.publish.upload;
        upload.FtpGeneralError = true;
        upload.fault = "Error " + numtext(static_cast<int>(error.number)) + " in PerformUpload";
        copy.log.event_or_nothing(" " + upload.fault);
        stop_watchdog(copy);
    }
}

}  // namespace nimbry
