#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/ini_file.h"
#include "engine/displays/dialog_controls.h"

namespace nimbry {

struct WeatherState;

/// The values of the dialog `FrmMarquee`: the readings that the big display's line goes through. All are off by
/// default.
struct MarqueeDialog {
    bool chkHI = false, chkDew = false, chkChill = false;
    bool chkRain = false, chkRainTot = false;
    bool chkInTemp = false, chkInHum = false;
    bool chkRainLH = false;
    bool chkSunrise = false, chkSunset = false;
    bool chkWindGLH = false;

    bool operator==(const MarqueeDialog&) const = default;
};

/// One reading of the line: its key in section `Marquee`, its check box, and where its text comes from.
struct MarqueeItem {
    std::string_view key;
    std::string_view check_box;
    bool MarqueeDialog::*ticked;
    std::string_view name;                              ///< "Heat Index"
    const std::string& (*source)(const WeatherState&);  ///< a box's text, or a time of the sun
};

/// The eleven items in the order of the line.
[[nodiscard]] std::span<const MarqueeItem> marquee_items();

/// What stands beside an item's value: its name, that of today's rain with the changeover in force ("Rainfall Since
/// 9.00am ").
[[nodiscard]] std::string marquee_label(const MarqueeItem& item, const WeatherState& state);

/// The check boxes with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(MarqueeDialog& dialog);

/// Section `Marquee`.
[[nodiscard]] MarqueeDialog read_marquee(const clsIniFile& ini);

/// Writes all keys of the section with one write. True on success.
bool write_marquee(clsIniFile& ini, const MarqueeDialog& dialog);

}  // namespace nimbry
