#include "engine/records/changeover.h"

#include <utility>

#include "engine/core/event.h"
#include "engine/core/run_time_error.h"
#include "engine/publish/publishing.h"
#include "engine/records/day_end.h"
#include "engine/records/do_changeover.h"
#include "engine/records/record_step.h"

namespace nimbry {
namespace {

using std::chrono::hours;
using std::chrono::seconds;
constexpr seconds settled{61};

void trigger(Copy& copy) {
    WeatherState& state = copy.state;
    if (!state.settings.fromnet) {
        state.comm.changebusy.set();
        lock_setup_windows(state.setup);
        gencomail(copy);
    }
    state.records.ChangeTriggered = true;
    DoChangeover(copy);
}

// The mails that ask for a changeover go out in the pass that changed over early.
void mail_changeover(Copy& copy) {
    const WeatherState& state = copy.state;
    if (state.publish.emailbusy || !state.comm.changebusy || !state.publish.NimbryFTPSetup.ChkSendMail) return;
    if (send_changeover_mails(copy)) copy.state.records.coMailSent = true;
}

// Station hour and minute as the clock shows them, and its seconds: all compared as texts.
struct StationClock {
    std::string tthours, ttmins, ttsecs;
};

StationClock cut(const std::string& time) {
    if (time.size() < 8) return {};
    return {time.substr(0, 2), time.substr(3, 2), time.substr(6, 2)};
}

// The last ten seconds before the hour: `hour` is the one that ends.
bool early(const StationClock& clock, std::string_view hour) {
    return clock.tthours == hour && clock.ttmins == "59" && clock.ttsecs >= "50";
}

bool first_minute(const StationClock& clock, std::string_view hour) {
    return clock.tthours == hour && clock.ttmins == "00";
}

// In a conversation of its own, so that no server can hold up the weather; one after the other, as they share the line.
void catch_up_what_was_put_off(Copy& copy) {
    PublishState& publish = copy.state.publish;
    const bool ftp = std::exchange(publish.revisitftp, false);
    const bool mail = std::exchange(publish.revisitmail, false);
    const bool weather = std::exchange(publish.revisitwu, false);
    if (mail) copy.state.records.coMailSent = true;
    if (!ftp && !mail && !weather) return;
    start_event(copy, "MailChangeover", [&copy, ftp, mail, weather] {
        if (ftp) FTPupload(copy);
        if (mail) uploadmail(copy);
        if (weather) wunderground(copy);
    });
}

// The hour at which the day ends: the last one before it, and its own, as the station's clock shows them.
struct ChangeHour {
    hours since_midnight;
    std::string_view ctrigtime, mctrigtime;
};

ChangeHour change_hour(const MainSettings& settings) {
    switch (selected_day_end(settings)) {
        case DayEnd::midnight: return {hours{0}, "23", "00"};
        case DayEnd::nine: return {hours{9}, "08", "09"};
        case DayEnd::ten: break;
    }
    return {hours{10}, "09", "10"};
}

}  // namespace

CivilTime changeover_instant(const MainSettings& settings, CivilTime now) {
    return std::chrono::floor<std::chrono::days>(now) + change_hour(settings).since_midnight + seconds{1};
}

void MailChangeover(Copy& copy) {
    WeatherState& state = copy.state;
    if (!state.readings.dtvar) return;
    tagged("MailChangeover", [&] {
        const MainSettings& settings = state.settings;
        const StationClock clock = cut(state.readings.rdattime);
        bool& triggered = state.records.ChangeTriggered;
        state.records.coMailSent = false;
        if (*state.readings.dtvar - changeover_instant(settings, *state.readings.dtvar) >= settled) triggered = false;

        const ChangeHour hour = change_hour(settings);
        if (early(clock, hour.ctrigtime)) {
            record_step(copy, [&] { trigger(copy); });
            record_step(copy, [&] { mail_changeover(copy); });
        }
        if (first_minute(clock, hour.mctrigtime) && !triggered) record_step(copy, [&] { trigger(copy); });

        state.comm.changebusy.clear();
        drop_unsent_changeover_mail(copy);
        record_step(copy, [&] { catch_up_what_was_put_off(copy); });
        state.run.DuplicateError = false;
    });
}

}  // namespace nimbry
