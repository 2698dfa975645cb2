#include "engine/publish/weather_services.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "engine/derived/number_text.h"
#include "engine/publish/aprs_upload.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/internet.h"
#include "engine/publish/last_run.h"
#include "engine/publish/publishing.h"
#include "engine/publish/red_button.h"
#include "engine/publish/weather_query.h"

namespace nimbry {
namespace {

constexpr std::size_t longest_user_not_forced = 4;
constexpr Milliseconds reply_limit{10000};
constexpr int not_found = 404;

bool takes_part(const WeatherService& service, const PublishState& publish) {
    const InternetDialog& settings = publish.NimbryFTPSetup;
    if (!publish.FtpForced) return settings.*service.active;
    return trimmed(settings.*service.user).size() > longest_user_not_forced;
}

bool aprs_takes_part(const PublishState& publish) {
    const InternetDialog& settings = publish.NimbryFTPSetup;
    if (settings.chkAPRS) return true;
    return publish.FtpForced && trimmed(settings.txtAPRSID).size() >= shortest_call && !publish.aprs_latitude.empty();
}

std::vector<const WeatherService*> services_taking_part(const PublishState& publish) {
    std::vector<const WeatherService*> services;
    for (const WeatherService* service : services_by_query())
        if (takes_part(*service, publish)) services.push_back(service);
    return services;
}

/// The server that is about to be used first.
std::string first_host(const Copy& copy, const std::vector<const WeatherService*>& services) {
    if (services.empty()) return trimmed(copy.state.settings.APRSserver);
    return host_of(*services.front(), copy.state.publish.NimbryFTPSetup);
}

void tell_no_connection(Copy& copy, bool only_aprs) {
    copy.ports.notices.balloon({.title = "Upload Error",
                                .text = "Nimbry was unable to make a connection\r\n"
                                        "and did not complete Weather Underground upload!",
                                .icon = "!"});
    for (const WeatherService* service : services_by_query()) {
        if ((copy.state.menu.*service->log_switch).checked)
            copy.log.event(std::string(" ") + service->name + " upload failed: Unable to connect to Internet");
    }
    PublishState& publish = copy.state.publish;
    note_run(copy, only_aprs ? publish.last_aprs : publish.last_weather, "Unable to connect to Internet");
}

/// How a request ended: the end of its line in the log, and of its summary.
struct Outcome {
    std::string log_line, result;
};

Outcome outcome_of(const WeatherService& service, const WebReply& reply) {
    const std::string name = service.name;
    const std::string upload = " " + name + " upload ";
    if (reply.end() == WebReply::End::timed_out)
        return {upload + "Failure. Connection timed out", name + " Connection timed out"};
    std::string classified = "OK";
    if (reply.status() == not_found || reply.body_start().find("404") != std::string::npos) {
        classified = name + " File not found (Error 404)";
    } else if (reply.end() == WebReply::End::no_connection || reply.body_start().empty()) {
        classified = name + " Server not found";
    }
    return {upload + classified, classified == "OK" ? run_went_well : classified};
}

/// Sends one report; returns how it went.
std::string send_report(Copy& copy, const WeatherService& service, const std::string& items) {
    const RedButton red(copy.state.menu.fmb[2]);
    const std::string request = weather_request(service, copy.state.publish.NimbryFTPSetup, items);
    const std::unique_ptr<WebReply> reply = copy.ports.transfers.get(request, reply_limit);
    copy.ports.pauses.wait_until([&] { return !reply->under_way(); });
    Outcome outcome = outcome_of(service, *reply);
    if ((copy.state.menu.*service.log_switch).checked) copy.log.event(outcome.log_line);
    return outcome.result;
}

void report_to_all(Copy& copy, const std::vector<const WeatherService*>& services) {
    WeatherState& state = copy.state;
    // For APRS alone, too: the peak gust begins anew with each report, and its interval of rain is counted.
    const std::string items = weather_items(state, copy.ports.clock.utc_time());
    if (!services.empty()) {
        std::string result = run_went_well;
        for (const WeatherService* service : services) {
            std::string ended = send_report(copy, *service, items);
            if (result == run_went_well) result = std::move(ended);
        }
        note_run(copy, state.publish.last_weather, std::move(result));
    }
    if (aprs_takes_part(state.publish)) aprsupload(copy);
}

}  // namespace

void weather_services(Copy& copy) {
    const WeatherState& state = copy.state;
    const InternetDialog& settings = state.publish.NimbryFTPSetup;
    if (state.settings.fromnet || (!settings.chkWU && !settings.chkHW && !settings.chkAPRS)) return;
    int& minutes = copy.state.publish.WuMinutes;
    if (++minutes < report_interval(settings)) return;
    minutes = 0;
    wunderground(copy);
}

void wunderground(Copy& copy) {
    PublishState& publish = copy.state.publish;
    const RunState& run = copy.state.run;
    if (run.HaveError || run.ProgramClosing || copy.state.settings.fromnet || publish.wubusy) return;
    if (copy.state.comm.changebusy) {
        publish.revisitwu = true;
        return;
    }
    tell_forced_run(copy, ForcedRun::weather);
    update_location_text(copy);
    const auto services = services_taking_part(publish);
    if (!go_online(copy, first_host(copy, services)))
        return tell_no_connection(copy, services.empty() && aprs_takes_part(publish));
    {
        const auto busy = publish.wubusy.try_hold();
        report_to_all(copy, services);
    }
    leave_line(copy);
}

}  // namespace nimbry
