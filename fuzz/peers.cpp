// Machines of the network that say anything: clients at a server's door, and a server and stray datagrams at a client.
// The laws: whatever comes, and however it is cut, the copy goes on and takes the next train; a conversation ends when
// its patience does; and no file but those of a synchronisation is written.
#include <chrono>
#include <string>

#include "engine/network/sync_commands.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

constexpr int most_steps = 60;
const std::string other_machine = "10.0.0.1";

/// The words of the conversation, so that the fuzzer need not find their letters, or its own.
std::string words(fuzz::Input& input) {
    const auto which = static_cast<std::size_t>(input.next());
    return which < sync_texts.size() ? std::string(sync_texts[which]) : input.text();
}

Bytes datagram(fuzz::Input& input) {
    const std::string bytes = input.text();
    return {bytes.begin(), bytes.end()};
}

void client_calls(World& server, fuzz::Input& input) {
    ScriptedPeerPtr client;
    for (int steps = 0; steps < most_steps && !input.empty(); ++steps) {
        if (!client || client->left()) client = server.streams.call(sync_port, other_machine);
        const int what = input.next();
        if (client && what < 200) client->say(words(input));
        if (client && what >= 250) client->close();
        if (what >= 200 && what < 210) server.send_train();
        server.run_for(std::chrono::milliseconds{what * 5});
    }
}

void server_answers(World& client, fuzz::Input& input) {
    client.streams.answer(other_machine, sync_port, [&](const ScriptedPeerPtr& server) {
        server->say("cmdAcceptCNX,");
        server->on_heard([&](ScriptedPeer& end, const std::string&) {
            // One that has nothing more to say leaves: a silent one costs minutes of virtual time.
            const int what = input.empty() ? 255 : input.next();
            for (int n = what % 3; n >= 0; --n) {
                end.say(words(input));
                client.pauses.pause(std::chrono::milliseconds{what});
            }
            if (what >= 250) end.close();
        });
    });
    client.send_datagram(write_train({}), other_machine);
    client.run_for(10min);
    for (int steps = 0; steps < most_steps && !input.empty(); ++steps) {
        client.send_datagram(datagram(input), other_machine);
        client.run_for(3s);
    }
}

}  // namespace
}  // namespace nimbry::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace nimbry::test;
    nimbry::fuzz::Input input(data, size);
    const bool is_server = (input.next() & 1) != 0;
    StartedWorld world(is_server ? "bcastnet=True\r\nnumofentries=1\r\niplist(1)=10.0.0.1\r\n" : "fromnet=True\r\n");
    const auto trains = [&] { return world.state().comm.counters.trains; };
    if (is_server) {
        world.state().havegrafdata = true;
        client_calls(world, input);
        world.run_for(1min);
    } else {
        server_answers(world, input);
    }
    nimbry::fuzz::expect(!world.engine.gone());
    const auto before = trains();
    if (is_server) {
        world.send_train();
    } else {
        world.send_datagram(nimbry::write_train({}), other_machine);
        world.run_for(1s);
    }
    nimbry::fuzz::expect(trains() == before + 1);
    return 0;
}
