#include "engine/displays/additional_window.h"

#include "engine/core/copy.h"
#include "engine/core/switches.h"
#include "engine/records/extremes_display.h"
#include "engine/sun/sun_texts.h"

namespace nimbry {
namespace {

void take_open(WeatherState& state, bool open) {
    state.additional.Additional_Open = open;
    enable_additional(state);
}

}  // namespace

void enable_additional(WeatherState& state) {
    const bool closed = !state.additional.Additional_Open;
    state.menu.mnuAdditional.enabled = closed;
    state.menu.fmb[4].enabled = closed && !state.menu.fmb_locked;
}

void mnuAdditional(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    if (copy.state.additional.Additional_Open) return;
    take_open(copy.state, true);
    additional_comes_to_front(copy);
}

void additional_comes_to_front(Copy& copy) {
    show_rain_days(copy.state);
    // Before the first cycles nothing has been worked out yet, and a place that is entered would look like none. Later
    // on the texts are the cycle's: looking at the window does not change what the pages say.
    if (copy.state.sun.websunrise.empty()) refresh_sun_texts(copy);
    show_sun_picture(copy);
}

void additional_closed(Copy& copy) {
    take_open(copy.state, false);
}

void hide_additional(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    additional_closed(copy);
}

}  // namespace nimbry
