#include "engine/displays/big_display.h"

#include <algorithm>
#include <array>

#include "engine/core/copy.h"
#include "engine/core/switches.h"
#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

constexpr std::array readings{
    BigReading{"txtDisTemp", "Text2(0)"}, BigReading{"txtDisHum", "Text2(2)"},
    BigReading{"txtDisWGS", "Text2(6)"},  BigReading{"txtDisWGD", "Text2(7)"},
    BigReading{"txtWAS", "Text2(3)"},     BigReading{"txtWAD", "TxtWinDir"},
    BigReading{"txtDisBar", "Text2(4)"},  BigReading{"txtDisBarTrend", "TxtBarTrend"},
};

}  // namespace

std::span<const BigReading> big_readings() {
    return readings;
}

void show_time_and_date(WeatherState& state) {
    state.big.txtDisTimDat.text = state.panel.TxtTime.text + "  " + state.panel.TxtDate.text;
}

void turn_marquee(WeatherState& state) {
    BigDisplay& big = state.big;
    const auto items = marquee_items();
    const auto is_ticked = [&big](const MarqueeItem& item) { return big.FrmMarquee.*item.ticked; };
    big.ValidItems = std::any_of(items.begin(), items.end(), is_ticked);
    if (!big.ValidItems) {
        big.Label9.text = "**  Nimbry  **";
        big.Label10.text.clear();
        return;
    }
    const auto count = static_cast<int>(items.size());
    const auto shown = [&]() -> const MarqueeItem& { return items[static_cast<std::size_t>(big.DisCount - 1)]; };
    do {
        big.DisCount = big.DisCount % count + 1;
    } while (!is_ticked(shown()));
    big.Label9.text = marquee_label(shown(), state);
    big.Label10.text = trimmed(shown().source(state));
}

void mnuBIG(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    if (copy.state.big.open) return;
    copy.state.big.open = true;
    turn_marquee(copy.state);
    copy.timers.start(TimerId::Timer1, copy.ports.clock.monotonic());
}

void big_display_closed(Copy& copy) {
    copy.state.big.open = false;
    copy.timers.stop(TimerId::Timer1);
}

void getmarquee(Copy& copy) {
    copy.state.big.FrmMarquee = read_marquee(copy.ini);
}

void accept_marquee(Copy& copy, const MarqueeDialog& values) {
    copy.ports.sounds.play(std::string(click_sound));
    copy.state.big.FrmMarquee = values;
    write_marquee(copy.ini, values);
}

}  // namespace nimbry
