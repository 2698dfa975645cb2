#pragma once

#include <string_view>

#include "engine/displays/box.h"

namespace nimbry {

/// The boxes of the window "Nimbry Additional Data" (`NimbryAdditional`), under their control names: what has no room
/// on the main panel. They are written whether the window is open or not, and tags read them back.
struct AdditionalPanel {
    // "Additional Current Conditions (calculated)"
    Box txtWetBulb, txtWBDep, txtCloudBase;

    // "Extreme Conditions": today and yesterday
    Box txtMaxDew, txtMinDew, txtMinWC, txtMaxHI, txtMaxInTemp, txtMinInTemp;
    Box txtYMaxDew, txtYMinDew, txtYMinWC, txtYMaxHI, txtYMaxInTemp, txtYMinInTemp;

    // "Rainfall Statistics"
    Box txtDSR, txtAmtLastRain;
    Box txtRainDays, txtMnthTotal;  ///< under "Monthly Rainfall"

    // Sun
    Box TxtSunrise, TxtSunset, TxtSunriseTom, TxtSunsetTom, txtTwiStart, txtTwiEnd;
    Box txtSolarNoon, txtDayLength, txtVisLight;
    Box Picture1;  ///< the sun's picture
    Box lblNoSun;  ///< shown in the sun boxes' place while no location is entered

    // Uptime
    Box txtStarted, txtRunning;

    Box Command1;  ///< the button that closes the window
    Box mnuHide;   ///< its menu entry; not the `mnuHide` of the main window

    bool Additional_Open = false;  ///< the window is showing
};

/// Empties the boxes and gives the window's labels, its button and its menu entry their texts.
void reset_additional_panel(AdditionalPanel& panel);

/// The fixed caption that stands by a box of this window ("Wet Bulb Temperature" by "txtWetBulb"); empty if it has
/// none.
[[nodiscard]] std::string_view additional_caption(std::string_view box_name);

}  // namespace nimbry
