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
    [[nodiscard]] std::vector<std::string> lines(PanelLayout layout = PanelLayout::wide) const {
        std::istringstream table(panel_table(state, layout));
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
    panel.Text2[0].text = "+12.3 \260C";
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
    state.panel.TxtTempMax.text = "+18.0 \260C at 13:05";
    state.panel.TxtOShi.text = "+31.5 \260C at 15:00 on 20 Jul";
    // "+18.0 °C at 13:05" is 17 wide, "24 Hours prior to Midnight" 26; two blanks between columns.
    EXPECT_EQ(lines()[13], " Extreme Conditions   Since Midnight" + std::string(17 - 14 + 2, ' ') +
                               "24 Hours prior to Midnight  Since the last station reset");
    EXPECT_EQ(lines()[14],
              " Maximum Temperature  +18.0 °C at 13:05" + std::string(2 + 26 + 2, ' ') + "+31.5 °C at 15:00 on 20 Jul");
}

TEST_F(PanelTableTest, TheLowBatteryIsToldOnlyWhileItIs) {
    EXPECT_EQ(lines()[0].find("Low Battery"), std::string::npos);
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
    for (const PanelLayout layout : {PanelLayout::wide, PanelLayout::narrow}) {
        const std::string table = panel_table(state, layout);
        for (const std::string& text : marks) EXPECT_NE(table.find(text), std::string::npos) << text;
    }
}

TEST_F(PanelTableTest, ThePortsTroubleStandsBelowTheHead) {
    EXPECT_EQ(lines()[1], "");
    state.comm.PortTrouble = "Serial port lost (/dev/pts/7)";
    for (const PanelLayout layout : {PanelLayout::wide, PanelLayout::narrow}) {
        EXPECT_EQ(lines(layout)[1], " Serial port lost (/dev/pts/7)");
        EXPECT_TRUE(lines(layout)[2].starts_with(" Outdoor Temp."));
    }
}

TEST_F(PanelTableTest, AReadingInAlarmIsMarkedWithoutAColour) {
    state.panel.TxtRainToday.text = " 26 mm";
    state.panel.Text2[4].text = " 1031 mB";
    for (const PanelLayout layout : {PanelLayout::wide, PanelLayout::narrow}) {
        EXPECT_EQ(panel_table(state, layout).find("(!)"), std::string::npos);
        const MainPanel calm = state.panel;
        state.panel.TxtRainToday.back = state.panel.Text2[4].back = colours::alarm_back;
        EXPECT_EQ(lines(layout)[1], " (!) in alarm");
        EXPECT_NE(lines(layout)[9].find("1031 mB (!)  "), std::string::npos) << lines(layout)[9];
        EXPECT_TRUE(lines(layout)[9].ends_with("26 mm (!)")) << lines(layout)[9];
        EXPECT_EQ(lines(layout)[2].find("(!)"), std::string::npos) << "the others are not";
        state.comm.PortTrouble = "Serial port lost (/dev/pts/7)";
        EXPECT_EQ(lines(layout)[1], " Serial port lost (/dev/pts/7)") << "what is wrong with the port comes first";
        state.comm.PortTrouble.clear();
        state.panel = calm;
    }
}

TEST_F(PanelTableTest, AnHourWithoutWindHasItsUnit) {
    state.units = units_from(state.settings);
    state.panel.TxtWindGLH.text = "0 ";
    EXPECT_TRUE(lines()[6].ends_with("Maximum wind gust in the last hour  0 km/h")) << lines()[6];
    state.panel.TxtWindGLH.text = "10.8 km/h";
    EXPECT_TRUE(lines()[6].ends_with("Maximum wind gust in the last hour  10.8 km/h")) << lines()[6];
}

/// Columns of a line of UTF-8.
std::size_t columns(const std::string& line) {
    return static_cast<std::size_t>(std::count_if(
        line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

TEST_F(PanelTableTest, TheNarrowLayoutFitsAnOrdinaryTerminalWithTheLongestTexts) {
    MainPanel& panel = state.panel;
    state.settings.tmidnight = true;
    set_changeover_captions(panel, state.settings);
    panel.TxtTime.text = "14:00:10";
    panel.TxtDate.text = "Oct  5";
    panel.lblStatus.text = "Current Conditions";
    panel.lblLowBattery.visible = true;
    panel.TxtForecast.text = "Partly Cloudy";
    panel.Text2[8].text = "-40.0 \260F";
    panel.Text2[7].text = "Gust 359\xB0";
    panel.TxtWindGLH.text = "125.3 km/h";
    panel.TxtPeakRain().text = " 39.29 In./hour";
    panel.TxtRainYest.text = " 393.66 In.";
    for (Box* box : {&panel.TxtGustMax, &panel.TxtYGustMax}) box->text = " 125.3 km/h, 359\xB0 at 10:41";
    panel.TxtYTempMax.text = "- No data available yet -";
    panel.TxtWindHiG.text = " 125.3 km/h, 359\xB0 at 14:41 on 05 Nov";
    for (const std::string& line : lines(PanelLayout::narrow)) EXPECT_LE(columns(line), 80U) << line;
    {
        const MainPanel calm = panel;
        for (Box& box : panel.Text2) box.back = colours::alarm_back;
        panel.TxtRainToday.back = colours::alarm_back;
        for (const std::string& line : lines(PanelLayout::narrow)) EXPECT_LE(columns(line), 80U) << line;
        panel = calm;
    }
    // The present and both days stand in the first 22 lines; what the station remembers is behind them.
    EXPECT_EQ(lines(PanelLayout::narrow)[10],
              " Barometer Trend                  Rain 24 Hours to Midnight   393.66 In.");
    EXPECT_TRUE(lines(PanelLayout::narrow)[21].starts_with(" Barometer Minimum"));
    EXPECT_EQ(lines(PanelLayout::narrow)[22], "");
    EXPECT_EQ(lines(PanelLayout::narrow)[23], " Extreme Conditions   Since the last station reset");
    EXPECT_EQ(lines(PanelLayout::narrow)[28], " Maximum Wind Speed   125.3 km/h, 359° at 14:41 on 05 Nov");
    EXPECT_EQ(lines(PanelLayout::narrow).size(), 29U);
    EXPECT_GT(columns(lines()[18]), 80U) << "the wide one needs more";
}

}  // namespace
}  // namespace nimbry
