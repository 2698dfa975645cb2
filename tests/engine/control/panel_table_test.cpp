#include "engine/control/panel_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"

namespace nimbry {
namespace {

class PanelTableTest : public testing::Test {
protected:
    PanelTableTest() {
        reset_main_panel(state);
        set_changeover_captions(state.panel, state.settings);
    }
    [[nodiscard]] std::vector<std::string> lines() const {
        std::istringstream table(panel_table(state));
        std::vector<std::string> all;
        for (std::string line; std::getline(table, line);) all.push_back(line);
        return all;
    }
    WeatherState state;
};

TEST_F(PanelTableTest, ReadingsStandBesideTheirCaptionsInColumns) {
    MainPanel& panel = state.panel;
    panel.TxtTime.text = "14:00:10";
    panel.TxtDate.text = "Oct  5";
    panel.lblStatus.text = "Current Conditions";
    panel.Text2[0].text =
        "+12.3 \xB0"
        "C";
    panel.Text2[6].text = " 15.1 km/h";
    panel.Text2[2].text = "54 %";
    panel.Text2[7].text = "Gust 90\xB0";
    panel.TxtRainToday.text = " 1.2 mm";
    panel.Text2[4].text = " 1013 mB";
    // Columns by hand: the longest texts are "Outdoor Humidity" (16), a reading's least width (16),
    // "Rainfall 24 Hours prior ..." in lower case (34).
    EXPECT_EQ(lines()[0], " 14:00:10  Oct  5  Current Conditions");
    EXPECT_EQ(lines()[1], "");
    EXPECT_EQ(lines()[2], " Outdoor Temp.     +12.3 °C          Wind Speed Gust                     15.1 km/h");
    EXPECT_EQ(lines()[3], " Outdoor Humidity  54 %              Wind Direction                      Gust 90°");
    EXPECT_EQ(lines()[9], " Barometer         1013 mB           Rainfall since 9:00 am              1.2 mm");
    EXPECT_EQ(lines()[10], " Barometer Trend                     Rainfall 24 Hours prior to 9:00 am");
}

TEST_F(PanelTableTest, ExtremesStandInThreeColumnsUnderTheChangeoverInForce) {
    state.settings.tmidnight = true;
    set_changeover_captions(state.panel, state.settings);
    state.panel.TxtTempMax.text =
        "+18.0 \xB0"
        "C at 13:05";
    state.panel.TxtOShi.text =
        "+31.5 \xB0"
        "C at 15:00 on 20 Jul";
    // "+18.0 °C at 13:05" is 17 wide, "24 Hours prior to Midnight" 26; two blanks between columns.
    EXPECT_EQ(lines()[13], " Extreme Conditions   Since Midnight" + std::string(17 - 14 + 2, ' ') +
                               "24 Hours prior to Midnight  Since the last station reset");
    EXPECT_EQ(lines()[14],
              " Maximum Temperature  +18.0 °C at 13:05" + std::string(2 + 26 + 2, ' ') + "+31.5 °C at 15:00 on 20 Jul");
}

TEST_F(PanelTableTest, TheLowBatteryIsToldOnlyWhileItIs) {
    EXPECT_EQ(panel_table(state).find("Low Battery"), std::string::npos);
    state.panel.lblLowBattery.visible = true;
    EXPECT_NE(lines()[0].find("Program Starting  Low Battery !"), std::string::npos) << lines()[0];
}

TEST_F(PanelTableTest, EveryReadingOfTheMainWindowIsInIt) {
    MainPanel& panel = state.panel;
    int n = 0;
    std::vector<std::string> marks;
    const auto mark = [&](Box& box) {
        box.text = "mark" + std::to_string(n++) + ".";
        marks.push_back(box.text);
    };
    for (Box& box : panel.Text2) mark(box);
    for (Box* box :
         {&panel.TxtTime,     &panel.TxtDate,     &panel.TxtForecast, &panel.TxtWindChill, &panel.TxtHeatInd,
          &panel.TxtWinDir,   &panel.TxtWindGLH,  &panel.TxtBarTrend, &panel.TxtRainLH,    &panel.TxtRainToday,
          &panel.TxtRainYest, &panel.TxtRainTot,  &panel.TxtTempMax,  &panel.TxtTempMin,   &panel.TxtHumMax,
          &panel.TxtHumMin,   &panel.TxtGustMax,  &panel.TxtRainMax,  &panel.TxtBarMax,    &panel.TxtBarMin,
          &panel.TxtYTempMax, &panel.TxtYTempMin, &panel.TxtYHumMax,  &panel.TxtYHumMin,   &panel.TxtYGustMax,
          &panel.TxtYRainMax, &panel.TxtYBarMax,  &panel.TxtYBarMin,  &panel.TxtOShi,      &panel.TxtOSLo,
          &panel.TxtOsHumHi,  &panel.TxtOsHumLo,  &panel.TxtWindHiG}) {
        mark(*box);
    }
    const std::string table = panel_table(state);
    for (const std::string& text : marks) EXPECT_NE(table.find(text), std::string::npos) << text;
}

}  // namespace
}  // namespace nimbry
