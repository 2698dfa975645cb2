#include "engine/publish/internet.h"

namespace nimbry {
namespace {

bool line_is_wanted(const PublishState& publish) {
    return publish.uloadftpbusy || publish.emailbusy || publish.wubusy || publish.revisitftp || publish.revisitmail ||
           publish.revisitwu;
}

}  // namespace

bool isconnected(const Copy& copy, const std::string& host) {
    return copy.ports.transfers.reachable(host);
}

void dial(Copy&) {}

void hangup(Copy& copy) {
    bool& dialled = copy.state.publish.ProgramDialled;
    if (!dialled) return;
    copy.ports.desktop.hang_up_modem();
    dialled = false;
}

bool go_online(Copy& copy, const std::string& host) {
    if (isconnected(copy, host)) return true;
    if (copy.state.publish.NimbryFTPSetup.ChkDial) dial(copy);
    return isconnected(copy, host);
}

void leave_line(Copy& copy) {
    const PublishState& publish = copy.state.publish;
    if (publish.NimbryFTPSetup.ChkHangup && !line_is_wanted(publish)) hangup(copy);
}

}  // namespace nimbry
