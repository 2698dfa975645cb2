#include "engine/records/extremes.h"

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/publish/publishing.h"
#include "engine/records/changeover.h"
#include "engine/records/load_extremes.h"
#include "engine/records/rain.h"
#include "engine/records/record_step.h"
#include "engine/records/update_extremes.h"
#include "engine/sun/sun_texts.h"

namespace nimbry {

namespace {

void mail_by_schedule(Copy& copy) {
    const WeatherState& state = copy.state;
    if (state.comm.changebusy || state.settings.fromnet || !state.publish.NimbryFTPSetup.ChkSendMail ||
        state.records.coMailSent)
        return;
    send_scheduled_mails(copy);
}

/// A changeover locks the setup windows, and so does a mail; once they are over they are their users' again.
void give_setup_windows_back(WeatherState& state) {
    if (!state.comm.changebusy && !state.publish.emailbusy) unlock_setup_windows(state.setup);
}

/// One tick for each visit of the station's clock to the seconds 30 to 39. A minute without a train in them has none.
void graph_tick(Copy& copy) {
    const std::string& time = copy.state.readings.rdattime;
    if (time.size() < 8) return;
    const double seconds = Val(time.substr(6, 2));
    bool& done = copy.state.run.grafoneminute;
    if (seconds < 30 || seconds > 39) {
        done = false;
        return;
    }
    if (done) return;
    updategraphs(copy);
    rain_last_hour(copy);
    done = true;
}

}  // namespace

void extremes(Copy& copy) {
    WeatherState& state = copy.state;
    if (!state.run.fullystarted || state.run.DuplicateError || state.run.HaveError) return;
    tagged("extremes", [&] {
        record_step(copy, [&] { refresh_sun_texts(copy); });
        if (state.run.firstrun)
            resetextremes(copy);
        else if (state.records.unitschanged)
            reload_in_new_units(copy);
        record_step(copy, [&] { update_outdoor_extremes(copy); });
        record_step(copy, [&] { rain_of_the_day(copy); });
        record_step(copy, [&] { update_indoor_extremes(copy); });
        record_step(copy, [&] { MailChangeover(copy); });
        record_step(copy, [&] { mail_by_schedule(copy); });
        give_setup_windows_back(state);
        record_step(copy, [&] { graph_tick(copy); });
        show_sun_picture(copy);
        record_step(copy, [&] { midnight_rain_file(copy); });
        // An error behind the changeover, which clears it too, must not keep the next train from being recorded.
        state.run.DuplicateError = false;
    });
}

}  // namespace nimbry
