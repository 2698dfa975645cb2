#include "engine/displays/additional_window.h"

#include "engine/core/copy.h"
#include "engine/core/switches.h"
#include "engine/records/extremes_display.h"
#include "engine/sun/sun_texts.h"

namespace nimbry {
namespace {

void take_open(WeatherState& state, bool open) {
    state.additional.Additional_Open = open;
    state.menu.mnuAdditional.enabled = !open;
    state.menu.fmb[4].enabled = !open;
}

}  // namespace

void mnuAdditional(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    if (copy.state.additional.Additional_Open) return;
    take_open(copy.state, true);
    additional_comes_to_front(copy);
}

void additional_comes_to_front(Copy& copy) {
    show_rain_days(copy.state);
    // Before the first cycle nothing has been worked out yet, and a place that is entered would look like none.
    refresh_sun_texts(copy);
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
