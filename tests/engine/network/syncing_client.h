#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/station/train_writer.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {

inline const std::string server_address = "10.0.0.1";

/// The settings of a server that shows degrees Fahrenheit, and the files that it sends, by the request for each.
inline const std::string server_settings =
    "False\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nFalse\r\n"
    "True\r\nFalse\r\n905\r\nFalse\r\n51.5\r\n-0.25\r\n";

/// A rain file of the server: 60 minutes, 0.4 mm in the fourth.
inline std::string rain_file() {
    std::string text = "5\r\n60\r\n";
    for (int n = 0; n < 62; ++n) text += (n == 3 ? "4" : "0") + std::string("\r\n");
    return text;
}

/// A client, and a server that answers as a real one does, unless the test says otherwise.
struct Client : World {
    std::map<std::string, std::string> answers{
        {"cmdRequestSyncFile,", server_settings}, {"cmdRequestGraphFile,", "graphs"},
        {"cmdRequestTdayFile,", "today"},         {"cmdRequestYdayFile,", "yesterday"},
        {"cmdRequestRainLH,", rain_file()},       {"cmdRequestAlmanac,", "almanac"}};
    std::string status_answer = "cmdServerIsOK,";
    std::string greeting = "cmdAcceptCNX,";
    std::set<std::string> missing;                       ///< requests that are answered with "no such file"
    std::function<void(const std::string&)> on_request;  ///< looks at each thing the client says first
    std::string address = server_address;                ///< where the first datagram comes from
    ScriptedPeerPtr server;
    Instant begun;

    explicit Client(const std::string& lines = "") {
        files.put("Nimbry.ini", main_section("fromnet=True\r\n" + lines));
        start();
        streams.answer(server_address, 60131, [this](const ScriptedPeerPtr& peer) {
            server = peer;
            peer->on_heard([this](ScriptedPeer&, const std::string& words) { answer(words); });
            if (!greeting.empty()) peer->say(greeting);
        });
    }

    void answer(const std::string& words) {
        if (on_request) on_request(words);
        if (missing.contains(words)) return server->say("cmdInvalidFile,");
        if (words == "cmdServerStatus,") {
            if (!status_answer.empty()) server->say(status_answer);
            return;
        }
        const auto found = answers.find(words);
        if (found == answers.end()) return;
        pauses.pause(Milliseconds(310));
        if (!found->second.empty()) server->say(found->second);
        pauses.pause(Milliseconds(20));
        server->say("cmdfilended,");
    }

    /// The first datagram comes, and the conversation runs.
    void begin() {
        begun = clock.monotonic();
        send_datagram(write_train({}), address);
        run_for(Milliseconds(2));
    }
    void synchronise_whole() {
        begin();
        run_for(std::chrono::minutes(10));
    }

    /// The status lines, without those of the six files unless asked for.
    [[nodiscard]] std::vector<std::string> told() const {
        std::vector<std::string> told;
        for (const auto& shown : notices.lines) told.push_back(shown.what);
        return told;
    }
    /// What the client sent: "ms after the first datagram: text".
    [[nodiscard]] std::vector<std::string> said() const {
        std::vector<std::string> said;
        for (const auto& sent : server->sent()) {
            const auto at = std::chrono::duration_cast<Milliseconds>(sent.at - begun).count();
            said.push_back(std::to_string(at) + ": " + sent.bytes);
        }
        return said;
    }
    [[nodiscard]] int count_said(const std::string& text) const {
        int count = 0;
        for (const auto& sent : server->sent()) count += sent.bytes == text ? 1 : 0;
        return count;
    }
    [[nodiscard]] const NetworkState& network() { return state().network; }
};

}  // namespace nimbry::test
