#include "engine/publish/next_runs.h"

#include <algorithm>
#include <string>

#include "engine/derived/number_text.h"
#include "engine/publish/aprs_upload.h"
#include "engine/publish/ftp_upload.h"
#include "engine/publish/weather_query.h"
#include "engine/records/changeover.h"

namespace nimbry {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

/// The computer's time at which a timer ticks for the n-th time from now.
std::optional<CivilTime> nth_tick(const Copy& copy, TimerId id, int n) {
    const auto due = copy.timers.due(id);
    if (!due) return {};
    const auto from_now = *due - copy.ports.clock.monotonic() + Timers::interval(id) * (std::max(n, 1) - 1);
    return copy.ports.clock.computer_time() + std::chrono::round<seconds>(from_now);
}

std::optional<CivilTime> next_upload(const Copy& copy) {
    const PublishState& publish = copy.state.publish;
    if (!publish.NimbryFTPSetup.ChkEnableFTP && !publish.NimbryFTPSetup.chkLocal) return {};
    // The first upload looks at the count before it is raised, the others behind that.
    const int ticks = publish.FtpStartupDone ? publish.FtpMinutes * ticks_a_minute - publish.FtpTicks
                                             : ticks_to_first_upload - publish.FtpTicks + 1;
    return nth_tick(copy, TimerId::TimerFTP, ticks);
}

/// The next time after `now` at which the station's clock shows an entry; nothing for one that is no time.
std::optional<CivilTime> next_of(const std::string& entry, const MainSettings& settings, CivilTime now) {
    const auto today = std::chrono::floor<days>(now);
    CivilTime at;
    if (entry.find("CHANGE") != std::string::npos) {
        at = changeover_instant(settings, now) - seconds{11};  // the last ten seconds of the day
    } else {
        if (entry.size() != 5 || entry[2] != ':') return {};
        at = today + hours{whole_number(entry.substr(0, 2))} + minutes{whole_number(entry.substr(3))};
        if (at < today || at >= today + days{1}) return {};
    }
    return at > now ? at : at + days{1};
}

std::optional<CivilTime> next_mail(const WeatherState& state) {
    const InternetDialog& settings = state.publish.NimbryFTPSetup;
    std::optional<CivilTime> next;
    if (!settings.ChkSendMail || !state.readings.dtvar) return next;
    for (const std::string& entry : settings.MailList) {
        const auto at = next_of(entry, state.settings, *state.readings.dtvar);
        if (at && (!next || *at < *next)) next = at;
    }
    return next;
}

}  // namespace

NextRuns next_runs(const Copy& copy) {
    NextRuns next;
    if (copy.state.settings.fromnet) return next;
    const PublishState& publish = copy.state.publish;
    const InternetDialog& settings = publish.NimbryFTPSetup;
    next.ftp = next_upload(copy);
    next.mail = next_mail(copy.state);
    const int interval = report_interval(settings);
    const int ticks = interval - publish.WuMinutes;
    if (settings.chkWU || settings.chkHW) next.weather = nth_tick(copy, TimerId::timWU, ticks);
    if (settings.chkAPRS) {
        const bool left_out = interval < least_aprs_interval && !publish.AprsSkipped;
        next.aprs = nth_tick(copy, TimerId::timWU, left_out ? std::max(ticks, 1) + interval : ticks);
    }
    return next;
}

}  // namespace nimbry
