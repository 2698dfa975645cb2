#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/world/started_world.h"

namespace nimbry::test {

/// A server that has graph data to send, and a client that has connected.
struct SyncingServer : StartedWorld {
    explicit SyncingServer(const std::string& lines = "") : StartedWorld("bcastnet=True\r\n" + lines) {
        state().havegrafdata = true;
    }

    ScriptedPeerPtr connect(const std::string& address = "127.0.0.2") {
        ScriptedPeerPtr peer = streams.call(60131, address);
        run_for(Milliseconds{5});
        return peer;
    }

    /// What a client hears from now on until a time has passed: "ms after now: text", long content by its size.
    std::vector<std::string> hears(const ScriptedPeerPtr& client, MonotonicClock::duration for_time) {
        const std::size_t before = client->sent().size();
        const Instant begun = clock.monotonic();
        run_for(for_time);
        std::vector<std::string> heard;
        for (std::size_t n = before; n < client->sent().size(); ++n) {
            const ScriptedPeer::Sent& sent = client->sent()[n];
            const auto at = std::chrono::duration_cast<Milliseconds>(sent.at - begun).count();
            heard.push_back(std::to_string(at) + ": " +
                            (sent.bytes.size() > 100 ? std::to_string(sent.bytes.size()) + " bytes" : sent.bytes));
        }
        return heard;
    }

    /// The same after the client has said something.
    std::vector<std::string> answers(const ScriptedPeerPtr& client, const std::string& words,
                                     MonotonicClock::duration for_time = std::chrono::seconds{1}) {
        client->say(words);
        return hears(client, for_time);
    }
};

}  // namespace nimbry::test
