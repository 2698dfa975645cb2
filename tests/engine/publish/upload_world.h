#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/timer_ticks.h"
#include "engine/publish/publishing.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {

/// A copy that publishes by FTP: the server is there and takes everything, and there is a template for one page. Its
/// timers tick.
struct UploadWorld : KnownState {
    UploadWorld() {
        files.put("myhtml.html", "page");
        settings().ChkEnableFTP = true;
        settings().FTPServer = " ftp.example.net ";
        settings().FTPUser = "me";
        settings().FTPPass = "secret";
        settings().FTPRemDir = " web ";
        settings().FTPRemoteFile = "index.html";
        pauses.set_wake_source([this] { return timers.wake_at(); },
                               [this] {
                                   while (const auto due = timers.take_due(clock.monotonic())) timer_tick(copy, *due);
                               });
        timers.stop_all();
    }
    ~UploadWorld() { pauses.end_all(); }

    [[nodiscard]] InternetDialog& settings() { return state.publish.NimbryFTPSetup; }
    [[nodiscard]] UploadState& upload() { return state.publish.upload; }
    [[nodiscard]] std::vector<std::string> sent() const { return transfers.names_sent(); }
    [[nodiscard]] std::vector<std::string> popups() const {
        std::vector<std::string> texts;
        for (const auto& shown : notices.balloons) texts.push_back(shown.what.title + ": " + shown.what.text);
        return texts;
    }
    /// The lines of the program log behind their dates.
    [[nodiscard]] std::vector<std::string> logged() const {
        std::vector<std::string> lines;
        for (const std::string& entry : log_lines())
            lines.push_back(entry.substr(std::min<std::size_t>(entry.size(), 20)));
        return lines;
    }
};

}  // namespace nimbry::test
