#include "engine/displays/conversion_popup.h"

#include <gtest/gtest.h>

#include "engine/core/weather_state.h"
#include "engine/displays/box_list.h"
#include "engine/records/extremes_display.h"
#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

/// A state whose boxes show something, with metric values of its own: what the pop-ups say must come from these, and
/// not from the texts of the boxes.
class ConversionPopups : public testing::Test {
protected:
    ConversionPopups() {
        for (const NamedBox& box : named_boxes(state)) box.box->text = " 77 of any unit";
        Readings& r = state.readings;
        r.rawostemp = "+12.6";
        r.DewInvariant = "+4.2";
        r.rawwindas = "3.1";
        r.rawwindgs = "10.4";
        r.BaroValue = 1013;
        r.RainRateMm = 6.3;
        r.rawintemp = "+21.4";
        r.ChillInvariant = "-0.4";
        r.HeatInvariant = "+24.3";
        r.rawoshi = "+34.2";
        r.rawoslo = "-11.7";
        r.rawwindhi = "24.6";
        r.RainTotalText = "827";
        r.RainSinceText = "827 mm of rain since January 3";
        state.rain.LastHourSum = 12;
        state.rain.raintoday = 3;
        DayExtremes& day = state.records.day;
        day.maxtemp = 13.1F;
        day.mintemp = -6.4F;
        day.maxwind = 10.7F;
        day.maxrain = 6;
        day.maxbar = 1019;
        day.minbar = 998;
        DayExtremes& yesterday = state.records.yesterday;
        yesterday.maxtemp = 14.9F;
        yesterday.mintemp = 0;
        yesterday.maxwind = 14.5F;
        yesterday.maxrain = 0;
        yesterday.maxbar = 1021;
        yesterday.minbar = 1012;
        state.records.rainyesterday = 11.0F;
    }

    WeatherState state;
};

struct Case {
    const char* box;
    const char* name;
    const char* lines;
};

// Each number was worked out by hand: C * 9 / 5 + 32; m/s * 3.6, 2.23693, 1.96936; hPa * 0.029528750668088; mm *
// 0.0393700787401575.
const Case cases[]{
    {"Text2(0)", "Current outside temperature", "+12.6 \260C\r\n+54.7 \260F"},
    {"Text2(1)", "Current dew point", "+4.2  \260C\r\n+39.6  \260F"},
    {"Text2(3)", "Current average wind speed", "3.1 m/s\r\n11.2 km/h\r\n6.9 MPH\r\n6.1 Knots"},
    {"Text2(4)", "Current barometric pressure", "1013 mB\r\n1013 hPa\r\n29.91 In.Hg"},
    {"Text2(5)", "Current peak rainfall rate", "6.3 mm/hour\r\n0.25 In/hour"},
    {"Text2(6)", "Current wind speed", "10.4 m/s\r\n37.4 km/h\r\n23.3 MPH\r\n20.5 Knots"},
    {"Text2(8)", "Current indoor temperature", "+21.4 \260C\r\n+70.5 \260F"},
    {"TxtWindChill", "Current wind chill", "-0.4 \260C\r\n+31.3 \260F"},
    {"TxtHeatInd", "Current heat index", "+24.3 \260C\r\n+75.7 \260F"},
    {"TxtRainLH", "Rainfall in last hour", "12 mm\r\n0.47 In"},
    {"TxtRainToday", "Rainfall today", "3 mm\r\n0.12 In"},
    {"TxtRainYest", "Rainfall yesterday", "11 mm\r\n0.43 In"},
    {"TxtRainTot", "Total rainfall since January 3", "827 mm\r\n32.56 In"},
    {"TxtTempMax", "Maximum outside temperature", "+13.1 \260C\r\n+55.6 \260F"},
    {"TxtTempMin", "Minimum outside temperature", "-6.4 \260C\r\n+20.5 \260F"},
    {"TxtYTempMax", "Maximum outside temperature", "+14.9 \260C\r\n+58.8 \260F"},
    {"TxtYTempMin", "Minimum outside temperature", "+0 \260C\r\n+32 \260F"},
    {"TxtOShi", "Maximum outside temperature", "+34.2 \260C\r\n+93.6 \260F"},
    {"TxtOSLo", "Minimum outside temperature", "-11.7 \260C\r\n+10.9 \260F"},
    {"TxtGustMax", "Maximum wind speed", "10.7 m/s\r\n38.5 km/h\r\n23.9 MPH\r\n21.1 Knots"},
    {"TxtYGustMax", "Maximum wind speed", "14.5 m/s\r\n52.2 km/h\r\n32.4 MPH\r\n28.6 Knots"},
    {"TxtWindHiG", "Maximum wind speed", "24.6 m/s\r\n88.6 km/h\r\n55 MPH\r\n48.4 Knots"},
    {"TxtRainMax", "Maximum peak rainfall rate", "6 mm/hour\r\n0.24 In/hour"},
    {"TxtYRainMax", "Maximum peak rainfall rate", "0 mm/hour\r\n0 In/hour"},
    {"TxtBarMax", "Maximum barometric pressure", "1019 mB\r\n1019 hPa\r\n30.09 In.Hg"},
    {"TxtBarMin", "Minimum barometric pressure", "998 mB\r\n998 hPa\r\n29.47 In.Hg"},
    {"TxtYBarMax", "Maximum barometric pressure", "1021 mB\r\n1021 hPa\r\n30.15 In.Hg"},
    {"TxtYBarMin", "Minimum barometric pressure", "1012 mB\r\n1012 hPa\r\n29.88 In.Hg"},
};

TEST_F(ConversionPopups, TellAReadingInEveryUnitFromItsMetricValue) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.box);
        const auto popup = conversion_popup(state, c.box);
        ASSERT_TRUE(popup);
        EXPECT_EQ(popup->name, c.name);
        EXPECT_EQ(popup->lines, c.lines);
    }
}

TEST_F(ConversionPopups, AreTheSameWhateverTheUnitsOfDisplay) {
    state.settings.fTempF = state.settings.fBarinhg = state.settings.fRainin = state.settings.fWindknots = true;
    state.units = units_from(state.settings);
    for (const Case& c : cases) EXPECT_EQ(conversion_popup(state, c.box)->lines, c.lines) << c.box;
}

TEST_F(ConversionPopups, OnlyBoxesWithSomethingToConvertHaveOne) {
    std::vector<std::string_view> with;
    for (const NamedBox& box : named_boxes(state))
        if (conversion_popup(state, box.name)) with.push_back(box.name);
    for (const char* without : {"Text2(2)", "Text2(7)", "Text2(9)", "TxtHumMax", "TxtYHumMin", "TxtOsHumHi", "TxtTime",
                                "TxtForecast", "TxtWinDir", "TxtBarTrend", "no such box", ""})
        EXPECT_FALSE(conversion_popup(state, without)) << without;
    EXPECT_EQ(with.size(), std::size(cases) + 1) << "the cases above, and the gust of the last hour";
}

TEST_F(ConversionPopups, TheGustOfTheLastHourIsTurnedBackFromItsUnit) {
    state.panel.TxtWindGLH.text = "31.3 km/h";
    EXPECT_EQ(conversion_popup(state, "TxtWindGLH"),
              (ConversionPopup{"Maximum wind gust in last hour", "8.7 m/s\r\n31.3 km/h\r\n19.4 MPH\r\n17.1 Knots"}));
    state.panel.TxtWindGLH.text = "0 ";
    EXPECT_EQ(conversion_popup(state, "TxtWindGLH")->lines, "0 m/s\r\n0 km/h\r\n0 MPH\r\n0 Knots");
}

TEST_F(ConversionPopups, ABoxWithoutAValueHasNone) {
    for (const char* text : {"", "  ", "Error", " Error ", "n.a.", "- No Valid Data -", "- No Data Available -",
                             "- No data available yet -", " -- "}) {
        SCOPED_TRACE(text);
        for (const Case& c : cases) {
            find_box(state, c.box)->text = text;
            EXPECT_FALSE(conversion_popup(state, c.box)) << c.box;
        }
    }
    for (const char* text : {"-4.7 \260C", "-0 \260C"}) {
        state.panel.Text2[0].text = text;
        EXPECT_TRUE(conversion_popup(state, "Text2(0)")) << text << ": a minus that belongs to a number";
    }
}

TEST_F(ConversionPopups, CalmIsAWindOf0InEveryUnit) {
    for (const char* box : {"Text2(3)", "Text2(6)", "TxtGustMax", "TxtYGustMax"}) {
        find_box(state, box)->text = "Calm";
        EXPECT_EQ(conversion_popup(state, box)->lines, "0 m/s\r\n0 km/h\r\n0 MPH\r\n0 Knots") << box;
    }
}

struct SignCase {
    const char* law;
    const char* celsius;
    const char* lines;
};

TEST_F(ConversionPopups, ATemperatureHasItsSignInBothLines) {
    for (const SignCase& c : {SignCase{"frost in both", "-30.0", "-30 \260C\r\n-22 \260F"},
                              SignCase{"frost in one only", "-04.7", "-4.7 \260C\r\n+23.5 \260F"},
                              SignCase{"the station's minus before 0", "-00.0", "-0 \260C\r\n+32 \260F"},
                              SignCase{"what rounds to 0 Fahrenheit", "-17.8", "-17.8 \260C\r\n+0 \260F"}}) {
        state.readings.rawostemp = c.celsius;
        EXPECT_EQ(conversion_popup(state, "Text2(0)")->lines, c.lines) << c.law;
    }
}

TEST_F(ConversionPopups, TheTotalHasNoDateBeforeTheStationToldIt) {
    state.readings.RainSinceText.clear();
    EXPECT_EQ(conversion_popup(state, "TxtRainTot")->name, "Total rainfall");
}

TEST(ConversionPopup, OfYesterdayGoesByWhatItsColumnShows) {
    WeatherState state;
    state.records.day.maxbar = 1019;
    state.records.day.maxtemp = 20.5F;
    state.rain.raintoday = 25.4F;
    ResYesterday(state);
    state.records.day.reset_values();
    state.rain.raintoday = 0;
    EXPECT_EQ(conversion_popup(state, "TxtYBarMax")->lines, "1019 mB\r\n1019 hPa\r\n30.09 In.Hg");
    EXPECT_EQ(conversion_popup(state, "TxtYTempMax")->lines, "+20.5 \260C\r\n+68.9 \260F");
    EXPECT_EQ(conversion_popup(state, "TxtYRainYest"), std::nullopt) << "no such box";
    EXPECT_EQ(conversion_popup(state, "TxtRainYest")->lines, "25.4 mm\r\n1 In");
    EXPECT_FALSE(conversion_popup(state, "TxtYTempMin")) << "no reading that day";
    show_no_yesterday(state);
    EXPECT_FALSE(conversion_popup(state, "TxtYBarMax"));
    EXPECT_FALSE(conversion_popup(state, "TxtRainYest"));
    EXPECT_FALSE(state.records.rainyesterday);
}

class ConversionsOfATrain : public Decoding {};

TEST_F(ConversionsOfATrain, GoByWhatTheStationSent) {
    station.temperature = {.indoor = 21.5, .outdoor = -4.7, .high = 38.4, .low = -12.6};
    station.barometer.hpa = 998;
    station.rain.rate_mm = 6;
    station.rain.total_mm = 827;
    station.wind.gust_ms = 10.4;
    station.wind.average_ms = 0;
    station.wind.record_ms = 24.6;
    use(TemperatureUnit::fahrenheit);
    use(WindUnit::knots);
    train();
    const auto lines = [&](const char* box) { return conversion_popup(state, box)->lines; };
    EXPECT_EQ(lines("Text2(0)"), "-4.7 \260C\r\n+23.5 \260F");
    EXPECT_EQ(lines("Text2(3)"), "0 m/s\r\n0 km/h\r\n0 MPH\r\n0 Knots") << "Calm";
    EXPECT_EQ(lines("Text2(4)"), "998 mB\r\n998 hPa\r\n29.47 In.Hg");
    EXPECT_EQ(lines("Text2(5)"), "6 mm/hour\r\n0.24 In/hour");
    EXPECT_EQ(lines("Text2(6)"), "10.4 m/s\r\n37.4 km/h\r\n23.3 MPH\r\n20.5 Knots");
    EXPECT_EQ(lines("Text2(8)"), "+21.5 \260C\r\n+70.7 \260F");
    EXPECT_EQ(lines("TxtOShi"), "+38.4 \260C\r\n+101.1 \260F");
    EXPECT_EQ(lines("TxtOSLo"), "-12.6 \260C\r\n+9.3 \260F");
    EXPECT_EQ(lines("TxtWindHiG"), "24.6 m/s\r\n88.6 km/h\r\n55 MPH\r\n48.4 Knots");
    EXPECT_EQ(lines("TxtRainTot"), "827 mm\r\n32.56 In");
    EXPECT_EQ(conversion_popup(state, "TxtRainTot")->name, "Total rainfall since April 5");
    EXPECT_EQ(lines("TxtWindChill"), "-4.7 \260C\r\n+23.5 \260F") << "in calm air";
    EXPECT_FALSE(conversion_popup(state, "TxtHeatInd")) << "n.a.";
}

}  // namespace
}  // namespace nimbry::test
