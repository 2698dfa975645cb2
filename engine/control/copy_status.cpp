#include "engine/control/copy_status.h"

#include <optional>
#include <string_view>
#include <utility>

#include "engine/alarms/alarms.h"
#include "engine/control/json_text.h"
#include "engine/core/main_settings.h"
#include "engine/core/serial_port.h"
#include "engine/core/version.h"
#include "engine/derived/code_page.h"
#include "engine/derived/dates.h"
#include "engine/publish/local_save.h"
#include "engine/publish/next_runs.h"
#include "engine/reports/page_names.h"

namespace nimbry {

namespace {

std::string role_of(const MainSettings& settings) {
    if (settings.fromnet) return "client";
    return settings.bcastnet ? "server" : "alone";
}

std::string folder_of(const Files& files) {
    std::string folder = files.path("");
    if (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
    return utf8_name(folder);
}

template <class Name>
std::string joined(const std::vector<Name>& names) {
    std::string list;
    for (const Name& name : names) list.append(list.empty() ? "" : ", ").append(name);
    return list;
}

void add_counters(std::vector<StatusField>& fields, const CommState::Counters& counters) {
    fields.push_back({"frames.trains", counters.trains});
    fields.push_back({"frames.lone", counters.lone});
    fields.push_back({"frames.bad_checksum", counters.bad_checksum});
    fields.push_back({"frames.wrong_length", counters.wrong_length});
    fields.push_back({"frames.unknown_tag", counters.unknown_tag});
    fields.push_back({"frames.before_first_train", counters.before_first_train});
    fields.push_back({"frames.bytes_thrown_away", counters.bytes_thrown_away});
}

StatusField time_field(std::string name, const std::optional<CivilTime>& time) {
    StatusField field{std::move(name), {}};
    if (time) field.value = stamp_text(*time);
    return field;
}

void add_upload(std::vector<StatusField>& fields, const std::string& kind, const LastRun& last,
                const std::optional<CivilTime>& next) {
    const std::string name = "uploads." + kind;
    fields.push_back(time_field(name + ".last_end", last.end));
    fields.push_back({name + ".last_result", {}});
    if (last.end) fields.back().value = utf8_text(last.result);
    fields.push_back(time_field(name + ".next_due", next));
}

/// What would keep pages from going out without a word.
void add_pages(std::vector<StatusField>& fields, const Copy& copy) {
    const InternetDialog& settings = copy.state.publish.NimbryFTPSetup;
    fields.push_back({"pages.name", {}});
    if (const auto name = remote_page(settings.FTPRemoteFile, 0)) fields.back().value = utf8_name(*name);
    fields.push_back({"pages.local_folder", {}});
    fields.push_back({"pages.local_folder_found", {}});
    if (!settings.chkLocal) return;
    fields[fields.size() - 2].value = utf8_name(settings.txtLocalPath);
    fields.back().value = local_folder_found(copy);
}

/// A server's clients and whoever fetches files from it; a client's server.
void add_network(std::vector<StatusField>& fields, const WeatherState& state) {
    const NetworkState& network = state.network;
    const bool client = state.settings.fromnet;
    fields.push_back({"network.peers", {}});
    const std::string peers = client ? network.last_sender : joined(state.settings.iplist);
    if (!peers.empty() && (client || state.settings.bcastnet)) fields.back().value = utf8_name(peers);
    fields.push_back(time_field("network.last_datagram", network.last_datagram));
    fields.push_back({"sync.running", network.syncing || network.connection != nullptr});
    fields.push_back({"sync.peer", {}});
    if (network.connection) {
        fields.back().value = network.connection->peer();
    } else if (client && !network.foundIP.empty()) {
        fields.back().value = network.foundIP;
    }
    fields.push_back(time_field("sync.last_end", network.sync_end));
    fields.push_back({"sync.last_result", {}});
    if (!network.sync_result.empty()) fields.back().value = network.sync_result;
}

/// What a value looks like as text: "" for an unknown one.
struct AsText {
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }
    std::string operator()(const std::string& value) const { return value; }
};

struct AsJson : AsText {
    using AsText::operator();
    std::string operator()(std::monostate) const { return "null"; }
    std::string operator()(const std::string& value) const { return json_string(value); }
};

/// The object of the fields from `at` on whose names begin with `prefix`; `at` is behind them then.
std::string object_of(const std::vector<StatusField>& fields, std::size_t& at, std::string_view prefix) {
    JsonObject object;
    while (at < fields.size() && fields[at].name.starts_with(prefix)) {
        const std::string_view name = std::string_view(fields[at].name).substr(prefix.size());
        if (const std::size_t point = name.find('.'); point != std::string_view::npos) {
            object.field(name.substr(0, point),
                         object_of(fields, at, std::string(prefix) + std::string(name.substr(0, point + 1))));
        } else {
            object.field(name, std::visit(AsJson{}, fields[at++].value));
        }
    }
    return object.text();
}

}  // namespace

std::vector<StatusField> copy_status(const Copy& copy) {
    const WeatherState& state = copy.state;
    std::vector<StatusField> fields{
        {"version", std::string(program_version)},
        {"folder", folder_of(copy.ports.files)},
        {"role", role_of(state.settings)},
        {"fullystarted", state.run.fullystarted},
        {"station_time", {}},
        {"serial.device", {}},
        {"serial.open", copy.ports.line.is_open()},
    };
    if (state.readings.dtvar) fields[4].value = stamp_text(*state.readings.dtvar);
    if (!state.settings.fromnet) fields[5].value = utf8_name(device_of_this_run(state));
    fields.push_back({"alarms.active", {}});
    if (const auto names = readings_in_alarm(state.panel); !names.empty()) fields.back().value = joined(names);
    add_counters(fields, state.comm.counters);
    const PublishState& publish = state.publish;
    const NextRuns next = next_runs(copy);
    add_upload(fields, "ftp", publish.last_ftp, next.ftp);
    add_upload(fields, "mail", publish.last_mail, next.mail);
    add_upload(fields, "weather", publish.last_weather, next.weather);
    add_upload(fields, "aprs", publish.last_aprs, next.aprs);
    add_pages(fields, copy);
    add_network(fields, state);
    fields.push_back({"waiting_for", {}});
    if (!state.run.waits.empty()) fields.back().value = utf8_name(joined(state.run.waits));
    return fields;
}

std::string status_lines(const std::vector<StatusField>& fields) {
    std::string lines;
    for (const StatusField& field : fields) lines += field.name + '\t' + std::visit(AsText{}, field.value) + '\n';
    return lines;
}

std::string status_json(const std::vector<StatusField>& fields) {
    std::size_t at = 0;
    return object_of(fields, at, "") + '\n';
}

}  // namespace nimbry
