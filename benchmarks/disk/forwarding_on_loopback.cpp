// What a server's loop pays for a train that goes to a thousand clients, on a real socket. Aim: under 10 ms.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <string>

#include "engine/network/forwarding.h"
#include "engine/station/train_writer.h"
#include "platform/qt_datagrams.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

void forward_a_train_to_1000_addresses(benchmark::State& run) {
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    BareCopy server;
    platform::QtDatagrams datasock;
    Ports ports{server.clock,   server.pauses,  server.files,  server.line,    datasock,
                server.streams, server.notices, server.sounds, server.desktop, server.transfers};
    Copy copy{server.state, ports, server.ini, server.log, server.timers};
    server.state.settings.bcastnet = true;
    server.state.network.LocalIP = "127.0.0.1";
    for (int n = 0; n < 1000; ++n) {
        server.state.settings.iplist.push_back("127.1." + std::to_string(n / 250) + "." + std::to_string(n % 250 + 1));
    }
    const Bytes train = write_train({});
    for (auto _ : run) forwardgroup(copy, train);
    if (!server.notices.balloons.empty()) run.SkipWithError("a datagram could not be sent");
}
BENCHMARK(forward_a_train_to_1000_addresses)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
