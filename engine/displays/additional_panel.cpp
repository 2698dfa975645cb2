#include "engine/displays/additional_panel.h"

#include <array>

#include "engine/displays/box_caption.h"

namespace nimbry {
namespace {

constexpr std::array captions{
    BoxCaption{"txtWetBulb", "Wet Bulb Temperature"},
    BoxCaption{"txtWBDep", "Wet Bulb Depression"},
    BoxCaption{"txtCloudBase", "Base height of convective (Cu) cloud"},
    BoxCaption{"txtMaxDew", "Maximum Dew Point"},
    BoxCaption{"txtYMaxDew", "Maximum Dew Point"},
    BoxCaption{"txtMinDew", "Minimum Dew Point"},
    BoxCaption{"txtYMinDew", "Minimum Dew Point"},
    BoxCaption{"txtMinWC", "Minimum Wind Chill"},
    BoxCaption{"txtYMinWC", "Minimum Wind Chill"},
    BoxCaption{"txtMaxHI", "Maximum Heat Index"},
    BoxCaption{"txtYMaxHI", "Maximum Heat Index"},
    BoxCaption{"txtMaxInTemp", "Maximum Indoor Temp"},
    BoxCaption{"txtYMaxInTemp", "Maximum Indoor Temp"},
    BoxCaption{"txtMinInTemp", "Minimum Indoor Temp"},
    BoxCaption{"txtYMinInTemp", "Minimum Indoor Temp"},
    BoxCaption{"txtDSR", "Days Since rain"},
    BoxCaption{"txtAmtLastRain", "Last Rain Amount"},
    BoxCaption{"txtRainDays", "Number of rain days"},
    BoxCaption{"txtMnthTotal", "Total This Month"},
    BoxCaption{"txtSolarNoon", "Solar noon"},
    BoxCaption{"txtDayLength", "Length of day"},
    BoxCaption{"txtVisLight", "Length of visible light"},
    BoxCaption{"txtStarted", "Nimbry was started at"},
    BoxCaption{"txtRunning", "and has been running for"},
};

}  // namespace

void reset_additional_panel(AdditionalPanel& panel) {
    panel = AdditionalPanel{};
    panel.lblNoSun.text = "Sunrise and Sunset data are not available as no location has been entered";
    panel.Command1.text = "      Close Window";  // the blanks leave room for the button's picture
    panel.mnuHide.text = "&Hide";
}

std::string_view additional_caption(std::string_view box_name) {
    return caption_in(captions, box_name);
}

}  // namespace nimbry
