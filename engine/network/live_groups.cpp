#include "engine/network/live_groups.h"

#include <algorithm>

#include "engine/core/event.h"
#include "engine/core/file_wait.h"
#include "engine/network/client_sync.h"
#include "engine/station/group_layout.h"
#include "engine/station/status_label.h"
#include "engine/station/train_groups.h"

namespace nimbry {

namespace {

// Kept on purpose: two bytes more than a train has are let through, and cut off.
constexpr std::size_t longest_datagram = 143;

/// After so many the other events have their turn, however fast more of them come.
constexpr int datagrams_at_a_time = 100;

bool is_listening(const Copy& copy) {
    return copy.state.settings.fromnet && !copy.state.run.ProgramClosing;
}

bool may_take(const Copy& copy) {
    const WeatherState& state = copy.state;
    return is_listening(copy) && !state.comm.dworkingb && !state.network.syncing && !state.comm.changebusy &&
           !state.graphs.GrafBusy && !state.comm.splashing;
}

void run_group(Copy& copy) {
    CommState& comm = copy.state.comm;
    if (comm.GroupTag == "8F") return domaingroup(copy);
    if (comm.GroupTag != "CF") return refuse(comm, FrameFault::unknown_tag);
    if (!copy.state.run.fullystarted) refuse(comm, FrameFault::before_first_train);
    docfgroup(copy);
}

void take_group(Copy& copy, const Bytes& datagram) {
    CommState& comm = copy.state.comm;
    show_data_arrival(copy);
    comm.refusal.reset();
    if (datagram.size() < lone_length || datagram.size() > longest_datagram) {
        return refuse(comm, FrameFault::wrong_length);
    }
    comm.RawBytes.assign(datagram.begin(),
                         datagram.begin() + static_cast<std::ptrdiff_t>(std::min(datagram.size(), train_length)));
    comm.GroupTag = tag_of(comm.RawBytes);
    run_group(copy);
    comm.RawBytes.clear();
    comm.GroupTag.clear();
}

void take_datagram(Copy& copy, const Datagram& datagram) {
    NetworkState& network = copy.state.network;
    copy.state.comm.dworkingb.set();
    network.last_datagram = copy.ports.clock.computer_time();
    network.last_sender = datagram.sender;
    if (network.gotnetdata)
        take_group(copy, datagram.bytes);
    else
        synchronise(copy, datagram.sender);
    copy.state.comm.dworkingb.clear();
}

/// The socket does not tell again of what it holds already. The other events go first.
void come_back_later(Copy& copy) {
    if (copy.state.network.draining_later) return;
    copy.state.network.draining_later = true;
    start_event(copy, "DATAsock", [&copy] {
        copy.ports.pauses.pause(Milliseconds{0});
        wait_for(copy, "DATAsock", [&copy] { return may_take(copy) || !is_listening(copy); });
        copy.state.network.draining_later = false;
        take_datagrams(copy);
    });
}

}  // namespace

void take_datagrams(Copy& copy) {
    for (int taken = 0; taken < datagrams_at_a_time && may_take(copy); ++taken) {
        const std::optional<Datagram> datagram = copy.ports.datasock.receive();
        if (!datagram) return;
        take_datagram(copy, *datagram);
    }
    if (is_listening(copy)) come_back_later(copy);
}

}  // namespace nimbry
