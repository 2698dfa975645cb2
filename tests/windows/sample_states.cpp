#include "tests/windows/sample_states.h"

#include <utility>

#include "engine/derived/dates.h"
#include "engine/displays/box_list.h"
#include "engine/graphs/graph_view.h"
#include "tests/world/front_day.h"

namespace nimbry::test {
namespace {

struct Text {
    const char* box;
    const char* text;
};

void put(WeatherState& state, const Text* texts, std::size_t count) {
    for (std::size_t n = 0; n < count; ++n) find_box(state, texts[n].box)->text = texts[n].text;
}

template <std::size_t Count>
void put(WeatherState& state, const Text (&texts)[Count]) {
    put(state, texts, Count);
}

}  // namespace

void fill_with_a_plain_day(WeatherState& state) {
    reset_main_panel(state);
    set_changeover_captions(state.panel, state.settings);
    const Text texts[]{
        {"TxtTime", "14:26:41"},
        {"TxtDate", "Oct  5"},
        {"TxtForecast", "Partly Cloudy"},
        {"Text2(0)", "+12.6 \260C"},
        {"Text2(1)", "+8.1 \260C"},
        {"Text2(2)", "74 %"},
        {"Text2(3)", " 11.2 km/h"},
        {"Text2(4)", " 1016 mB"},
        {"Text2(5)", " 0 mm/hour"},
        {"Text2(6)", " 23.8 km/h"},
        {"Text2(7)", "Gust 225\xB0"},
        {"Text2(8)", "+21.4 \260C"},
        {"Text2(9)", "48 %"},
        {"TxtWindChill", "+10.2 \260C"},
        {"TxtHeatInd", "n.a."},
        {"TxtWinDir", "Avg. 240\xB0"},
        {"TxtWindGLH", " 31.3 km/h"},
        {"TxtBarTrend", "Falling"},
        {"TxtRainLH", " 0 mm"},
        {"TxtRainToday", " 3 mm"},
        {"TxtRainYest", " 11 mm"},
        {"TxtRainTot", " 827 mm"},
        {"TxtTempMax", "+13.1 \260C at 13:48"},
        {"TxtTempMin", "+6.4 \260C at 05:52"},
        {"TxtHumMax", "93 % at 06:10"},
        {"TxtHumMin", "71 % at 14:02"},
        {"TxtGustMax", " 38.5 km/h, 231\xB0 at 11:17"},
        {"TxtRainMax", " 6 mm/hour at 09:41"},
        {"TxtBarMax", " 1019 mB at 00:31"},
        {"TxtBarMin", " 1016 mB at 14:20"},
        {"TxtYTempMax", "+14.9 \260C at 15:07"},
        {"TxtYTempMin", "+8.8 \260C at 23:59"},
        {"TxtYHumMax", "97 % at 04:30"},
        {"TxtYHumMin", "63 % at 15:10"},
        {"TxtYGustMax", " 52.2 km/h, 270\xB0 at 17:44"},
        {"TxtYRainMax", " 14 mm/hour at 19:03"},
        {"TxtYBarMax", " 1021 mB at 09:02"},
        {"TxtYBarMin", " 1012 mB at 18:55"},
        {"TxtOShi", "+34.2 \260C at 15:20 on 19  Jul"},
        {"TxtOSLo", "-11.7 \260C at 06:48 on 08  Jan"},
        {"TxtOsHumHi", "100 % at 07:15 on 02  Feb"},
        {"TxtOsHumLo", "19 % at 16:31 on 24  Apr"},
        {"TxtWindHiG", " 88.6 km/h, 275\xB0 at 03:17 on 15 Mar"},
    };
    put(state, texts);
    state.readings.rawostemp = "+12.6";
    state.readings.DewInvariant = "+8.1";
    state.readings.rawwindas = "3.1";
    state.readings.rawwindgs = "6.6";
    state.readings.BaroValue = 1016;
    state.readings.rawwindhi = "24.6";
    state.panel.lblStatus.text = "Current Conditions";
    state.panel.lblStatus.fore = colours::green;
    state.panel.Lamp.fore = colours::red;
    state.panel.PicPartly.visible = true;
    state.panel.Gauge1.value = 23.8;
    state.readings.adirint = 240;
    state.readings.gdirint = 225;
    state.readings.awcompaf = "SW";
    show_time_and_date(state);
    fill_with_a_front(state, *civil_time({2026, 10, 5, 23, 59, 33}));
    drawgraph(state);
}

void fill_with_long_texts(WeatherState& state) {
    fill_with_a_plain_day(state);
    state.settings.AddOneHour = true;
    set_changeover_captions(state.panel, state.settings);
    const Text texts[]{
        {"Text2(0)", "-104.8 \260F"},
        {"Text2(1)", "-104.8 \260F"},
        {"Text2(2)", "100 %"},
        {"Text2(3)", " 123.4 km/h"},
        {"Text2(4)", " 30.04 In.Hg"},
        {"Text2(5)", " 998.9 mm/hour"},
        {"Text2(6)", " 123.4 km/h"},
        {"Text2(7)", "Gust 337\xB0"},
        {"Text2(8)", "+104.8 \260F"},
        {"Text2(9)", "100 %"},
        {"TxtWindChill", "-104.8 \260F"},
        {"TxtHeatInd", "+104.8 \260F"},
        {"TxtWinDir", "Avg. 337\xB0"},
        {"TxtWindGLH", " 123.4 km/h"},
        {"TxtRainLH", " 123.45 mm"},
        {"TxtRainToday", " 123.45 mm"},
        {"TxtRainYest", " 123.45 mm"},
        {"TxtRainTot", " 12345.67 mm"},
        {"TxtGustMax", " 123.4 km/h, 337\xB0 at 23:59"},
        {"TxtYTempMax", "- No Data Available -"},
        {"TxtYTempMin", "- No Data Available -"},
        {"TxtYHumMax", "- No Data Available -"},
        {"TxtYHumMin", "- No Data Available -"},
        {"TxtYGustMax", " 123.4 km/h, 337\xB0 at 23:59"},
        {"TxtYRainMax", "- No Data Available -"},
        {"TxtYBarMax", "- No data available yet -"},
        {"TxtYBarMin", "- No Data Available -"},
        {"TxtWindHiG", " 123.4 km/h, 337\xB0 at 23:59 on 30 Sep"},
    };
    put(state, texts);
    state.panel.Gauge1 = {123.4, 124};
    state.panel.lblGaugeMax.text = "124";
}

void fill_with_trouble(WeatherState& state) {
    fill_with_a_plain_day(state);
    const Text texts[]{
        {"TxtForecast", "Storm"},     {"Text2(0)", "Error"},       {"Text2(3)", " 64.1 km/h"},
        {"Text2(4)", " 982 mB"},      {"Text2(5)", " 61 mm/hour"}, {"Text2(6)", " 97.2 km/h"},
        {"Text2(7)", "Gust 281\xB0"}, {"Text2(9)", "Error"},       {"TxtWinDir", "Avg. 262\xB0"},
        {"TxtWindGLH", " 104 km/h"},  {"TxtRainToday", " 38 mm"},  {"TxtRainLH", " 17 mm"},
        {"TxtWindChill", "Error"},
    };
    put(state, texts);
    for (const char* alarm : {"Text2(4)", "Text2(5)", "Text2(6)", "TxtRainToday"}) {
        find_box(state, alarm)->back = colours::alarm_back;
    }
    state.panel.lblStatus.text = "Framing Error";
    state.panel.lblStatus.fore = colours::blue;
    state.panel.lblLowBattery.visible = true;
    state.panel.PicPartly.visible = false;
    state.panel.PicStorm.visible = true;
    state.panel.Gauge1 = {97.2, 98};
    state.panel.lblGaugeMax.text = "98";
    state.readings.adirint = 262;
    state.readings.gdirint = 281;
    state.readings.awcompaf = "W";
    state.readings.rawwindgs = "27";
    state.menu.fmb[0].fore = colours::red;
}

void open_menus(WeatherState& state) {
    state.run.fullystarted = true;
    set_menu_for_role(state.menu, false, true);
    MainMenu& menu = state.menu;
    for (Box* entry :
         {&menu.mnuDisplayLog, &menu.mnuDisplayAlmanac, &menu.mnuProgLog, &menu.mnuClearProgLog, &menu.mnuAlMonth,
          &menu.mnuAutoReport, &menu.mnuLogs, &menu.mnuReports, &menu.fmb[0], &menu.fmb[5]})
        entry->enabled = true;
}

void fill_additional_data(WeatherState& state) {
    const Text texts[]{
        {"txtWetBulb", "+10.2 \260C"},
        {"txtWBDep", "2.4 \260C"},
        {"txtCloudBase", "562 meters. (1844 feet)"},
        {"txtMaxDew", "+8.9 \260C at 13:10"},
        {"txtMinDew", "+4.1 \260C at 05:40"},
        {"txtMinWC", "+3.2 \260C at 05:45"},
        {"txtMaxHI", "- No Valid Data -"},
        {"txtMaxInTemp", "+21.6 \260C at 12:31"},
        {"txtMinInTemp", "+18.4 \260C at 06:58"},
        {"txtYMaxDew", "+10.3 \260C at 16:20"},
        {"txtYMinDew", "+5.5 \260C at 23:41"},
        {"txtYMinWC", "+6.0 \260C at 23:58"},
        {"txtYMaxHI", "- No Valid Data -"},
        {"txtYMaxInTemp", "+22.3 \260C at 18:12"},
        {"txtYMinInTemp", "+18.9 \260C at 07:03"},
        {"txtDSR", "0"},
        {"txtAmtLastRain", "3 mm"},
        {"txtRainDays", "2"},
        {"txtMnthTotal", "17.5 mm"},
        {"TxtSunrise", "Sunrise today (05 October 2026) was at 06:09:12"},
        {"TxtSunset", "and Sunset will be at 17:30:01"},
        {"TxtSunriseTom", "Sunrise tomorrow (06 October 2026) will be at 06:10:51"},
        {"TxtSunsetTom", "and Sunset will be at 17:27:47"},
        {"txtTwiStart", "Civil twilight today (05 October 2026) started at 05:36:30"},
        {"txtTwiEnd", "Civil twilight today (05 October 2026) will end at 18:02:38"},
        {"txtSolarNoon", "11:49:41"},
        {"txtDayLength", "11 hours 20 minutes"},
        {"txtVisLight", "12 hours 26 minutes"},
        {"txtStarted", "28 Sep 2026 08:15:44"},
        {"txtRunning", "7 Days 6 Hours 11 Minutes"},
    };
    put(state, texts);
    state.additional.lblNoSun.visible = false;
    state.additional.Additional_Open = true;
}

void fill_additional_data_with_long_texts(WeatherState& state) {
    fill_additional_data(state);
    for (const char* box : {"txtMaxDew", "txtMinDew", "txtMinWC", "txtMaxHI", "txtMaxInTemp", "txtMinInTemp"})
        find_box(state, box)->text = "-104.8 \260F at 23:59";
    for (const char* box : {"txtYMaxDew", "txtYMinDew", "txtYMinWC", "txtYMaxHI"})
        find_box(state, box)->text = "- No data available yet -";
    const Text texts[]{
        {"txtWetBulb", "-104.8 \260F"},
        {"txtCloudBase", "12345 meters. (40502 feet)"},
        {"txtYMaxInTemp", "- No Data Available -"},
        {"txtYMinInTemp", "- No Valid Data -"},
        {"txtDSR", "1234"},
        {"txtAmtLastRain", "1234.56 mm"},
        {"txtMnthTotal", "1234.56 mm"},
        {"TxtSunriseTom", "Sunrise tomorrow (28 September 2028) will be at 06:10:51"},
        {"txtTwiStart", "Civil twilight today (28 September 2028) will start at 05:36:30"},
        {"txtTwiEnd", "Civil twilight today (28 September 2028) will end at 18:02:38"},
        {"txtDayLength", "12 hours 54 minutes"},
        {"txtRunning", "1234 Days 23 Hours 59 Minutes"},
    };
    put(state, texts);
}

void fill_big_display(WeatherState& state) {
    show_time_and_date(state);
    state.big.FrmMarquee = {};
    state.big.FrmMarquee.chkWindGLH = true;
    turn_marquee(state);
}

void show_no_sun(WeatherState& state) {
    for (const char* box : {"TxtSunrise", "TxtSunset", "TxtSunriseTom", "TxtSunsetTom", "txtTwiStart", "txtTwiEnd",
                            "txtSolarNoon", "txtDayLength", "txtVisLight", "Picture1"})
        find_box(state, box)->visible = false;
    state.additional.lblNoSun.visible = true;
}

}  // namespace nimbry::test
