#include "engine/network/rain_history.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {

namespace {

int next_value(std::string_view& text) {
    if (text.empty()) throw RunTimeError{ErrorNumber::past_end};
    const double value = std::nearbyint(Val(take_line(text)));
    using Limits = std::numeric_limits<std::int16_t>;
    if (value < Limits::min() || value > Limits::max()) throw RunTimeError{ErrorNumber::overflow};
    return static_cast<int>(value);
}

}  // namespace

std::string rain_history_text(const RainState& rain) {
    std::string text = numtext(rain.LastHourIndex) + "\r\n" + numtext(RainState::LastHourLimit) + "\r\n";
    for (const int minute : rain.LastHourRing) text += numtext(minute) + "\r\n";
    return text;
}

void read_rain_history(std::string_view text, RainState& rain) {
    rain.LastHourPrev.reset();
    const int index = next_value(text);
    rain.LastHourIndex = index >= 0 && index <= RainState::LastHourLimit ? index : 0;
    next_value(text);
    for (std::size_t n = 0; !text.empty(); ++n) {
        const int value = next_value(text);
        if (n >= rain.LastHourRing.size()) throw RunTimeError{ErrorNumber::index};
        rain.LastHourRing[n] = value;
    }
}

}  // namespace nimbry
