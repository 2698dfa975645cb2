#include "engine/publish/aprs_upload.h"

#include <array>
#include <memory>
#include <string>

#include "engine/core/file_wait.h"
#include "engine/core/version.h"
#include "engine/derived/number_text.h"
#include "engine/publish/aprs_packet.h"
#include "engine/publish/last_run.h"
#include "engine/publish/red_button.h"
#include "engine/publish/server_settings.h"
#include "engine/publish/weather_query.h"
#include "engine/reports/genuiview.h"

namespace nimbry {
namespace {

constexpr Milliseconds connect_limit{20000}, answer_limit{10000};
constexpr Milliseconds after_failure{100}, after_connect{1000}, before_packet{1000}, before_close{1500};
constexpr std::size_t most_received = 65536;

/// One of the two servers.
struct Server {
    std::string host, port, responds;
    const char* word;
};

std::array<Server, 2> servers(const MainSettings& settings) {
    return {Server{settings.APRSserver, settings.APRSport, settings.APRS_server_responds, "primary"},
            Server{settings.APRS2server, settings.APRS2port, settings.APRS_2server_responds, "secondary"}};
}

std::string upper_case(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

void log_event(Copy& copy, const std::string& text) {
    if (copy.state.menu.mnuLogAPRS.checked) copy.log.event(text);
}

void log_failure(Copy& copy, const std::string& why) {
    log_event(copy, " APRS upload Failure. " + why);
}

std::unique_ptr<Stream> connected_to(Copy& copy, const Server& server) {
    const int port = whole_number(server.port);
    if (port < 1 || port > highest_port) return nullptr;
    auto stream = copy.ports.streams.connect(trimmed(server.host), static_cast<std::uint16_t>(port));
    copy.ports.pauses.wait_until([&] { return stream->state() != StreamState::connecting; }, connect_limit);
    if (stream->state() != StreamState::connected) return nullptr;
    return stream;
}

/// True when the server has said something that holds the call sign.
bool heard(Copy& copy, Stream& stream, const std::string& call) {
    std::string received;
    const auto has_call = [&] {
        received += stream.take();
        if (received.find(call) != std::string::npos) return true;
        if (received.size() > most_received) received.erase(0, received.size() - call.size());
        return false;
    };
    bool found = false;
    copy.ports.pauses.wait_until(
        [&] {
            found = has_call();
            return found || stream.state() == StreamState::closed;
        },
        answer_limit);
    return found;
}

std::string packet_text(Copy& copy) {
    wait_for(copy, "genuibusy", [&] { return !copy.state.reports.genuibusy; });
    genuiview(copy);
    std::string packet;
    copy.ports.files.read("APRS.txt", packet);
    while (packet.ends_with('\r') || packet.ends_with('\n')) packet.pop_back();
    return trimmed(packet);
}

/// Lets time pass and throws away what the server has said.
void pause_and_forget(Copy& copy, Stream& stream, Milliseconds how_long) {
    copy.ports.pauses.pause(how_long);
    while (!stream.take().empty()) {
    }
}

void report(Copy& copy, Stream& stream, const Server& server, const std::string& packet) {
    const InternetDialog& settings = copy.state.publish.NimbryFTPSetup;
    const std::string call = trimmed(settings.txtAPRSID);
    pause_and_forget(copy, stream, after_connect);
    if (stream.state() == StreamState::connected)
        stream.send("user " + call + " pass " + trimmed(settings.APRSpass) + " vers NBY V" +
                    std::string(program_version) + "\r\n");
    LastRun& last = copy.state.publish.last_aprs;
    if (upper_case(trimmed(server.responds)) == "YES" && !heard(copy, stream, call)) {
        const std::string why = "No response to the user command";
        log_failure(copy, why);
        note_run(copy, last, why);
        return;
    }
    pause_and_forget(copy, stream, before_packet);
    const bool stands = stream.state() == StreamState::connected;
    if (stands) stream.send(packet + "\r\n");
    copy.ports.pauses.pause(before_close);
    stream.close();
    // Kept on purpose: the blank at the end, and that the line is written also where the server has left meanwhile.
    log_event(copy, " APRS upload success ");
    note_run(copy, last, stands ? run_went_well : "The server has closed the connection");
}

/// False for the call that is left out.
bool is_due(PublishState& publish) {
    if (report_interval(publish.NimbryFTPSetup) >= least_aprs_interval) return true;
    publish.AprsSkipped = !publish.AprsSkipped;
    return !publish.AprsSkipped;
}

}  // namespace

void aprsupload(Copy& copy) {
    PublishState& publish = copy.state.publish;
    aprsposition(copy.state);
    if (trimmed(publish.NimbryFTPSetup.txtAPRSID).size() < shortest_call || publish.aprs_latitude.empty()) return;
    if (!is_due(publish)) return;
    const RedButton red(copy.state.menu.fmb[2]);
    const std::string packet = packet_text(copy);
    std::string why;
    for (const Server& server : servers(copy.state.settings)) {
        if (!why.empty()) copy.ports.pauses.pause(after_failure);
        if (const auto stream = connected_to(copy, server)) return report(copy, *stream, server, packet);
        why = std::string("Connection timed out on ") + server.word + " server";
        log_failure(copy, why);
    }
    note_run(copy, publish.last_aprs, why);
}

}  // namespace nimbry
