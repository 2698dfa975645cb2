#include "engine/displays/box_list.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "engine/core/weather_state.h"

namespace nimbry {
namespace {

TEST(BoxList, HasEachNameOnce) {
    const WeatherState state;
    std::set<std::string> names;
    for (const NamedConstBox& entry : named_boxes(state)) {
        EXPECT_TRUE(names.insert(std::string(entry.name)).second) << entry.name;
    }
}

TEST(BoxList, ReachesTheBoxesOfTheStateItWasMadeFrom) {
    WeatherState state;
    find_box(state, "Text2(7)")->text = "Gust 225\xB0";
    EXPECT_EQ(state.panel.Text2[7].text, "Gust 225\xB0");
    find_box(state, "fmb(6)")->text = "Help";
    EXPECT_EQ(state.menu.fmb[6].text, "Help");
    find_box(state, "txtYMinInTemp")->text = "+17.2 \260C";
    EXPECT_EQ(state.additional.txtYMinInTemp.text, "+17.2 \260C");
}

TEST(BoxList, HasEveryDisplayOfTheMainWindow) {
    const WeatherState state;
    for (const char* name :
         {"TxtTime",     "TxtDate",      "lblStatus",    "Picture2(2)",  "lblLowBattery", "TxtForecast", "Text2(0)",
          "Text2(1)",    "Text2(2)",     "Text2(3)",     "Text2(4)",     "Text2(5)",      "Text2(6)",    "Text2(7)",
          "Text2(8)",    "Text2(9)",     "TxtPeakRain",  "TxtWindChill", "TxtHeatInd",    "TxtWinDir",   "TxtWindGLH",
          "TxtBarTrend", "TxtRainLH",    "TxtRainToday", "TxtRainYest",  "TxtRainTot",    "lblRainT",    "lblRainY",
          "lblToday",    "lblYesterday", "lblGaugeMax",  "TxtTempMax",   "TxtTempMin",    "TxtHumMax",   "TxtHumMin",
          "TxtRainMax",  "TxtBarMax",    "TxtBarMin",    "TxtGustMax",   "TxtYTempMax",   "TxtYTempMin", "TxtYHumMax",
          "TxtYHumMin",  "TxtYGustMax",  "TxtYBarMax",   "TxtYBarMin",   "TxtYRainMax",   "TxtOShi",     "TxtOSLo",
          "TxtOsHumHi",  "TxtOsHumLo",   "TxtWindHiG",   "PicSunny",     "PicCloudy",     "PicPartly",   "PicRain",
          "PicSnow",     "PicStorm",     "WindPic",      "fmb(0)",       "fmb(6)"})
        EXPECT_NE(find_box(state, name), nullptr) << name;
}

TEST(BoxList, KnowsThePeakRainUnderTwoNames) {
    const WeatherState state;
    EXPECT_EQ(find_box(state, "TxtPeakRain"), &state.panel.Text2[5]);
    EXPECT_EQ(find_box(state, "Text2(5)"), &state.panel.Text2[5]);
}

TEST(BoxList, TellsTheTwoHideEntriesApart) {
    const WeatherState state;
    EXPECT_EQ(find_box(state, "Form1.mnuHide"), &state.menu.mnuHide);
    EXPECT_EQ(find_box(state, "NimbryAdditional.mnuHide"), &state.additional.mnuHide);
    EXPECT_EQ(find_box(state, "mnuHide"), &state.menu.mnuHide) << "without a window it is the main window's";
}

TEST(BoxList, HasNoBoxForAnUnknownName) {
    const WeatherState state;
    EXPECT_EQ(find_box(state, "Text2(10)"), nullptr);
    EXPECT_EQ(find_box(state, ""), nullptr);
    EXPECT_EQ(find_box(state, "texT2(0)"), nullptr);
}

TEST(BoxList, BeginsWithTheReadingsOfTheMainWindowInAFixedOrder) {
    const WeatherState state;
    const auto list = named_boxes(state);
    ASSERT_GT(list.size(), 5U);
    EXPECT_EQ(list[0].name, "TxtTime");
    EXPECT_EQ(list[1].name, "TxtDate");
    EXPECT_EQ(list[2].name, "TxtForecast");
    EXPECT_EQ(list[3].name, "Text2(0)");
    EXPECT_EQ(list.back().name, "txtDisBarTrend");
}

TEST(BoxList, WritesAnObjectNameWithoutBracketsAndWindow) {
    EXPECT_EQ(object_name("Text2(0)"), "Text2_0");
    EXPECT_EQ(object_name("Picture2(2)"), "Picture2_2");
    EXPECT_EQ(object_name("fmb(4)"), "fmb_4");
    EXPECT_EQ(object_name("TxtTime"), "TxtTime");
    EXPECT_EQ(object_name("Form1.mnuHide"), "mnuHide");
}

TEST(AdditionalPanelAtLoad, HasItsFixedTexts) {
    WeatherState state;
    reset_main_panel(state);
    EXPECT_EQ(find_box(state, "lblNoSun")->text,
              "Sunrise and Sunset data are not available as no location has been entered");
    EXPECT_EQ(find_box(state, "NimbryAdditional.Command1")->text, "      Close Window");
    EXPECT_EQ(find_box(state, "NimbryAdditional.mnuHide")->text, "&Hide");
    EXPECT_FALSE(state.additional.Additional_Open);
}

struct CaptionCase {
    const char* box;
    const char* caption;
};

constexpr CaptionCase additional_captions[]{
    {"txtWetBulb", "Wet Bulb Temperature"},
    {"txtWBDep", "Wet Bulb Depression"},
    {"txtCloudBase", "Base height of convective (Cu) cloud"},
    {"txtMaxDew", "Maximum Dew Point"},
    {"txtYMaxDew", "Maximum Dew Point"},
    {"txtMinDew", "Minimum Dew Point"},
    {"txtYMinDew", "Minimum Dew Point"},
    {"txtMinWC", "Minimum Wind Chill"},
    {"txtYMinWC", "Minimum Wind Chill"},
    {"txtMaxHI", "Maximum Heat Index"},
    {"txtYMaxHI", "Maximum Heat Index"},
    {"txtMaxInTemp", "Maximum Indoor Temp"},
    {"txtYMaxInTemp", "Maximum Indoor Temp"},
    {"txtMinInTemp", "Minimum Indoor Temp"},
    {"txtYMinInTemp", "Minimum Indoor Temp"},
    {"txtDSR", "Days Since rain"},
    {"txtAmtLastRain", "Last Rain Amount"},
    {"txtRainDays", "Number of rain days"},
    {"txtMnthTotal", "Total This Month"},
    {"txtSolarNoon", "Solar noon"},
    {"txtDayLength", "Length of day"},
    {"txtVisLight", "Length of visible light"},
    {"txtStarted", "Nimbry was started at"},
    {"txtRunning", "and has been running for"},
    {"TxtSunrise", ""},
};

TEST(AdditionalCaptions, StandByTheirBoxes) {
    for (const CaptionCase& c : additional_captions) {
        SCOPED_TRACE(c.box);
        EXPECT_EQ(additional_caption(c.box), c.caption);
    }
}

}  // namespace
}  // namespace nimbry
