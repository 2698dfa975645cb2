#include "engine/displays/additional_panel.h"

#include <array>

namespace nimbry {
namespace {

struct Caption {
    std::string_view box, caption;
};

constexpr std::array captions{
    Caption{"txtWetBulb", "Wet Bulb Temperature"},
    Caption{"txtWBDep", "Wet Bulb Depression"},
    Caption{"txtCloudBase", "Base height of convective (Cu) cloud"},
    Caption{"txtMaxDew", "Maximum Dew Point"},
    Caption{"txtYMaxDew", "Maximum Dew Point"},
    Caption{"txtMinDew", "Minimum Dew Point"},
    Caption{"txtYMinDew", "Minimum Dew Point"},
    Caption{"txtMinWC", "Minimum Wind Chill"},
    Caption{"txtYMinWC", "Minimum Wind Chill"},
    Caption{"txtMaxHI", "Maximum Heat Index"},
    Caption{"txtYMaxHI", "Maximum Heat Index"},
    Caption{"txtMaxInTemp", "Maximum Indoor Temp"},
    Caption{"txtYMaxInTemp", "Maximum Indoor Temp"},
    Caption{"txtMinInTemp", "Minimum Indoor Temp"},
    Caption{"txtYMinInTemp", "Minimum Indoor Temp"},
    Caption{"txtDSR", "Days Since rain"},
    Caption{"txtAmtLastRain", "Last Rain Amount"},
    Caption{"txtRainDays", "Number of rain days"},
    Caption{"txtMnthTotal", "Total This Month"},
    Caption{"txtSolarNoon", "Solar noon"},
    Caption{"txtDayLength", "Length of day"},
    Caption{"txtVisLight", "Length of visible light"},
    Caption{"txtStarted", "Nimbry was started at"},
    Caption{"txtRunning", "and has been running for"},
};

}  // namespace

void reset_additional_panel(AdditionalPanel& panel) {
    panel = AdditionalPanel{};
    panel.lblNoSun.text = "Sunrise and Sunset data are not available as no location has been entered";
    panel.Command1.text = "      Close Window";  // the blanks leave room for the button's picture
    panel.mnuHide.text = "&Hide";
}

std::string_view additional_caption(std::string_view box_name) {
    for (const Caption& entry : captions) {
        if (entry.box == box_name) return entry.caption;
    }
    return {};
}

}  // namespace nimbry
