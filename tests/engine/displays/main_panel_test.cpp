#include "engine/displays/main_panel.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/core/weather_state.h"
#include "engine/displays/box_list.h"

namespace nimbry {
namespace {

struct AtLoad : WeatherState {
    AtLoad() { reset_main_panel(*this); }
};

struct TipCase {
    const char* box;
    const char* tip;
};

constexpr TipCase tips[]{
    {"TxtTime", "The curent time (from the weather station)"},
    {"TxtDate", "The current date (from the weather station)"},
    {"TxtTempMax", "Maximum outdoor temperature recorded today"},
    {"TxtTempMin", "Minimum outdoor temperature recorded today"},
    {"TxtHumMax", "The maximum outdoor humidity recorded so far today"},
    {"TxtHumMin", "The minimum outdoor humidity recorded so far today"},
    {"TxtRainMax", "The maximum rainfall rate recorded so far today"},
    {"TxtBarMax", "The highest barometric pressure recorded so far today"},
    {"TxtBarMin", "The lowest barometric pressure recorded so far today"},
    {"TxtGustMax", "Maximum wind speed and direction recorded today"},
    {"TxtYTempMax", "The maximum outdoor temperature recorded yesterday up until changeover"},
    {"TxtYTempMin", "The minimum outdoor temperature recorded yesterday up until changeover"},
    {"TxtYHumMax", "The maximum outdoor humidity recorded yesterday up until changeover"},
    {"TxtYHumMin", "The minimum outdoor humidity recorded yesterday up until changeover"},
    {"TxtYGustMax", "The speed and direction of the maximum wind gust recorded yesterday up until changeover"},
    {"TxtYBarMax", "The highest barometric pressure recorded yesterday up until changeover"},
    {"TxtYBarMin", "The lowest barometric pressure recorded yesterday up until changeover"},
    {"TxtYRainMax", "The maximum rainfall rate recorded yesterday up until changeover"},
    {"TxtRainToday", "The total rainfall recorded so far today since changeover"},
    {"TxtRainYest", "The total rainfall for the 24 hours up until changeover"},
    {"TxtRainTot", "The total rainfall since the last weather station reset"},
    {"TxtPeakRain", "The current peak (instantaneous) rainfall rate"},
    {"TxtOShi", "The maximum outdoor temperature recorded since the weather station was last reset"},
    {"TxtOSLo", "The minimum outdoor temperature recorded since the weather station was last reset"},
    {"TxtOsHumHi", "The maximum outdoor humidity recorded since the weather station was last reset"},
    {"TxtOsHumLo", "The minimum outdoor humidity recorded since the weather station was last reset"},
    {"TxtWindHiG", "The maximum wind speed and it's direction recorded since the weather station was last reset"},
    {"TxtBarTrend", "The barometric pressure trend"},
    {"TxtWinDir", "The current direction the wind is blowing from"},
    {"TxtWindChill", "The current Wind Chill temperature"},
    {"TxtHeatInd", "The current Heat Index"},
    {"Text2(0)", "The current outdoor temperature"},
    {"Text2(1)", "The current Dew Point Temperature"},
    {"Text2(2)", "The current outdoor humidity"},
    {"Text2(3)", "The current average (1 minute) wind speed"},
    {"Text2(4)", "The current barometric pressure"},
    {"Text2(5)", "The current peak (instantaneous) rainfall rate"},
    {"Text2(6)", "The current gust wind speed"},
    {"Text2(7)", "The current direction the wind is blowing from"},
    {"Text2(8)", "The current indoor temperature"},
    {"Text2(9)", "The current indoor humidity"},
    {"TxtForecast", "The forecast according to the weather station"},
    {"Picture2(2)", "Indicates data is being received"},
};

TEST(Tips, AreTheirBoxesFixedExplanation) {
    for (const TipCase& c : tips) {
        SCOPED_TRACE(c.box);
        const AtLoad state;
        const Box* box = find_box(state, c.box);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->tip, c.tip);
    }
}

struct CaptionCase {
    const char* box;
    const char* caption;
};

constexpr CaptionCase panel_captions[]{
    {"Text2(0)", "Outdoor Temp."},
    {"Text2(1)", "Dew Point"},
    {"Text2(2)", "Outdoor Humidity"},
    {"Text2(3)", "Wind Speed Avg."},
    {"Text2(4)", "Barometer"},
    {"Text2(5)", "Peak Rain Rate"},
    {"TxtPeakRain", "Peak Rain Rate"},
    {"Text2(6)", "Wind Speed Gust"},
    {"Text2(7)", "Wind Direction"},
    {"TxtWinDir", "Wind Direction"},
    {"Text2(8)", "Indoor Temp."},
    {"Text2(9)", "Indoor Humidity"},
    {"TxtWindChill", "Wind Chill"},
    {"TxtHeatInd", "Heat Index"},
    {"TxtForecast", "Forecast"},
    {"TxtBarTrend", "Barometer Trend"},
    {"TxtRainLH", "Rainfall in the last hour"},
    {"TxtRainTot", "Total Rainfall"},
    {"TxtWindGLH", "Maximum wind gust in the last hour"},
    {"TxtTempMax", "Maximum Temperature"},
    {"TxtYTempMax", "Maximum Temperature"},
    {"TxtOShi", "Maximum Temperature"},
    {"TxtTempMin", "Minimum Temperature"},
    {"TxtYTempMin", "Minimum Temperature"},
    {"TxtOSLo", "Minimum Temperature"},
    {"TxtHumMax", "Maximum Humidity"},
    {"TxtYHumMax", "Maximum Humidity"},
    {"TxtOsHumHi", "Maximum Humidity"},
    {"TxtHumMin", "Minimum Humidity"},
    {"TxtYHumMin", "Minimum Humidity"},
    {"TxtOsHumLo", "Minimum Humidity"},
    {"TxtGustMax", "Maximum Wind Speed"},
    {"TxtYGustMax", "Maximum Wind Speed"},
    {"TxtWindHiG", "Maximum Wind Speed"},
    {"TxtRainMax", "Max. Peak Rain Rate"},
    {"TxtYRainMax", "Max. Peak Rain Rate"},
    {"TxtBarMax", "Barometer Maximum"},
    {"TxtYBarMax", "Barometer Maximum"},
    {"TxtBarMin", "Barometer Minimum"},
    {"TxtYBarMin", "Barometer Minimum"},
    {"TxtRainToday", ""},
};

TEST(PanelCaptions, StandByTheirBoxes) {
    for (const CaptionCase& c : panel_captions) {
        SCOPED_TRACE(c.box);
        EXPECT_EQ(panel_caption(c.box), c.caption);
    }
}

TEST(MainPanelAtLoad, SaysThatTheProgramIsStarting) {
    const AtLoad state;
    EXPECT_EQ(state.panel.lblStatus.text, "Program Starting");
    EXPECT_EQ(state.panel.lblStatus.fore, 0x8080FFU);
}

TEST(MainPanelAtLoad, HasEmptyReadings) {
    const AtLoad state;
    for (const NamedConstBox& entry : named_boxes(state)) {
        if (entry.kind == BoxKind::reading) {
            EXPECT_EQ(entry.box->text, "") << entry.name;
        }
    }
}

TEST(MainPanelAtLoad, HidesTheSixWeatherPicturesAndTheBatteryLabel) {
    const AtLoad state;
    for (const char* name : {"PicSunny", "PicCloudy", "PicPartly", "PicRain", "PicSnow", "PicStorm", "lblLowBattery"}) {
        EXPECT_FALSE(find_box(state, name)->visible) << name;
    }
    EXPECT_EQ(state.panel.lblLowBattery.text, "Low Battery !");
    EXPECT_TRUE(state.panel.Text2[0].visible);
}

TEST(MainPanelAtLoad, HasADarkLamp) {
    EXPECT_EQ(AtLoad().panel.Lamp.fore, 0U);
}

TEST(MainPanelAtLoad, TintsTheReadingsThatHaveAnAlarm) {
    const AtLoad state;
    for (const NamedConstBox& entry : named_boxes(state)) {
        SCOPED_TRACE(std::string(entry.name));
        const std::string name(entry.name);
        Colour expected = 0xFFFFFF;
        if (name == "Text2(0)" || name == "Text2(1)" || name == "Text2(2)" || name == "Text2(4)" ||
            name == "Text2(6)" || name == "Text2(8)" || name == "txtDisTemp" || name == "txtDisHum" ||
            name == "txtDisWGS" || name == "txtDisBar") {
            expected = 0x80FF80;
        } else if (name == "Text2(5)" || name == "TxtPeakRain" || name == "TxtRainToday") {
            expected = 0xFF80FF;
        }
        EXPECT_EQ(entry.box->back, expected);
    }
}

struct GaugeCase {
    const char* law;
    WindUnit unit;
    double maximum;
    const char* label;
};

constexpr GaugeCase gauge_start[]{
    {"metres per second start at 15", WindUnit::ms, 15, "15"},
    {"kilometres per hour start at 50", WindUnit::kph, 50, "50"},
    {"miles per hour start at 30", WindUnit::mph, 30, "30"},
    {"knots start at 30", WindUnit::knots, 30, "30"},
};

TEST(GaugeStart, GivesTheScaleOfTheUnit) {
    for (const GaugeCase& c : gauge_start) {
        SCOPED_TRACE(c.law);
        WeatherState state;
        state.panel.Gauge1 = {70, 88};
        state.units.wind = c.unit;
        reset_main_panel(state);
        EXPECT_EQ(state.panel.Gauge1.maximum, c.maximum);
        EXPECT_EQ(state.panel.Gauge1.value, 0);
        EXPECT_EQ(state.panel.lblGaugeMax.text, c.label);
    }
}

struct ChangeoverCase {
    const char* law;
    bool midnight, one_hour_later;
    const char *today, *yesterday, *tip_today, *tip_yesterday;
};

constexpr ChangeoverCase changeover_captions[]{
    {"midnight", true, false, "Since Midnight", "24 Hours prior to Midnight", "Rainfall so far today since Midnight",
     "Rainfall for the 24 hours prior to Midnight"},
    {"one hour later means nothing at midnight", true, true, "Since Midnight", "24 Hours prior to Midnight",
     "Rainfall so far today since Midnight", "Rainfall for the 24 hours prior to Midnight"},
    {"nine", false, false, "Since 9:00 am", "24 Hours prior to 9:00 am", "Rainfall so far today since 9:00 am",
     "Rainfall for the 24 hours prior to 9:00 am"},
    {"ten", false, true, "Since 10:00 am", "24 Hours prior to 10:00 am", "Rainfall so far today since 10:00 am",
     "Rainfall for the 24 hours prior to 10:00 am"},
};

TEST(ChangeoverCaptions, NameTheChangeover) {
    for (const ChangeoverCase& c : changeover_captions) {
        SCOPED_TRACE(c.law);
        AtLoad state;
        state.settings.tmidnight = c.midnight;
        state.settings.tnineam = !c.midnight;
        state.settings.AddOneHour = c.one_hour_later;
        set_changeover_captions(state.panel, state.settings);
        EXPECT_EQ(state.panel.lblToday.text, c.today);
        EXPECT_EQ(state.panel.lblRainT.text, c.today);
        EXPECT_EQ(state.panel.lblYesterday.text, c.yesterday);
        EXPECT_EQ(state.panel.lblRainY.text, c.yesterday);
        EXPECT_EQ(state.panel.lblRainT.tip, c.tip_today);
        EXPECT_EQ(state.panel.lblRainY.tip, c.tip_yesterday);
        EXPECT_EQ(state.panel.TxtRainToday.tip, "The total rainfall recorded so far today since changeover")
            << "the box keeps its own tip";
    }
}

}  // namespace
}  // namespace nimbry
