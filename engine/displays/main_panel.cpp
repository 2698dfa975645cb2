#include "engine/displays/main_panel.h"

#include <string>

#include "engine/core/weather_state.h"
#include "engine/displays/box_caption.h"
#include "engine/graphs/graph_view.h"
#include "engine/records/day_end.h"

namespace nimbry {
namespace {

// Kept on purpose: "curent" and "it's" are the tips' own spelling.
void give_tips(MainPanel& panel) {
    panel.TxtTime.tip = "The curent time (from the weather station)";
    panel.TxtDate.tip = "The current date (from the weather station)";
    panel.Lamp.tip = "Indicates data is being received";
    panel.TxtForecast.tip = "The forecast according to the weather station";

    panel.Text2[0].tip = "The current outdoor temperature";
    panel.Text2[1].tip = "The current Dew Point Temperature";
    panel.Text2[2].tip = "The current outdoor humidity";
    panel.Text2[3].tip = "The current average (1 minute) wind speed";
    panel.Text2[4].tip = "The current barometric pressure";
    panel.Text2[5].tip = "The current peak (instantaneous) rainfall rate";
    panel.Text2[6].tip = "The current gust wind speed";
    panel.Text2[7].tip = "The current direction the wind is blowing from";
    panel.Text2[8].tip = "The current indoor temperature";
    panel.Text2[9].tip = "The current indoor humidity";
    panel.TxtWindChill.tip = "The current Wind Chill temperature";
    panel.TxtHeatInd.tip = "The current Heat Index";
    panel.TxtWinDir.tip = "The current direction the wind is blowing from";
    panel.TxtBarTrend.tip = "The barometric pressure trend";
    panel.TxtRainToday.tip = "The total rainfall recorded so far today since changeover";
    panel.TxtRainYest.tip = "The total rainfall for the 24 hours up until changeover";
    panel.TxtRainTot.tip = "The total rainfall since the last weather station reset";

    panel.gPicture1[0].tip = MainPanel::main_graph_tip;
    for (std::size_t pane = 1; pane < panel.gPicture1.size(); ++pane)
        panel.gPicture1[pane].tip = "Click to display full size";

    panel.TxtTempMax.tip = "Maximum outdoor temperature recorded today";
    panel.TxtTempMin.tip = "Minimum outdoor temperature recorded today";
    panel.TxtHumMax.tip = "The maximum outdoor humidity recorded so far today";
    panel.TxtHumMin.tip = "The minimum outdoor humidity recorded so far today";
    panel.TxtGustMax.tip = "Maximum wind speed and direction recorded today";
    panel.TxtRainMax.tip = "The maximum rainfall rate recorded so far today";
    panel.TxtBarMax.tip = "The highest barometric pressure recorded so far today";
    panel.TxtBarMin.tip = "The lowest barometric pressure recorded so far today";

    panel.TxtYTempMax.tip = "The maximum outdoor temperature recorded yesterday up until changeover";
    panel.TxtYTempMin.tip = "The minimum outdoor temperature recorded yesterday up until changeover";
    panel.TxtYHumMax.tip = "The maximum outdoor humidity recorded yesterday up until changeover";
    panel.TxtYHumMin.tip = "The minimum outdoor humidity recorded yesterday up until changeover";
    panel.TxtYGustMax.tip = "The speed and direction of the maximum wind gust recorded yesterday up until changeover";
    panel.TxtYRainMax.tip = "The maximum rainfall rate recorded yesterday up until changeover";
    panel.TxtYBarMax.tip = "The highest barometric pressure recorded yesterday up until changeover";
    panel.TxtYBarMin.tip = "The lowest barometric pressure recorded yesterday up until changeover";

    panel.TxtOShi.tip = "The maximum outdoor temperature recorded since the weather station was last reset";
    panel.TxtOSLo.tip = "The minimum outdoor temperature recorded since the weather station was last reset";
    panel.TxtOsHumHi.tip = "The maximum outdoor humidity recorded since the weather station was last reset";
    panel.TxtOsHumLo.tip = "The minimum outdoor humidity recorded since the weather station was last reset";
    panel.TxtWindHiG.tip =
        "The maximum wind speed and it's direction recorded since the weather station was last reset";
}

struct ChangeoverTexts {
    std::string_view today, yesterday, rain_tip_today, rain_tip_yesterday;
};

ChangeoverTexts changeover_texts(const MainSettings& settings) {
    switch (selected_day_end(settings)) {
        case DayEnd::midnight:
            return {"Since Midnight", "24 Hours prior to Midnight", "Rainfall so far today since Midnight",
                    "Rainfall for the 24 hours prior to Midnight"};
        case DayEnd::nine:
            return {"Since 9:00 am", "24 Hours prior to 9:00 am", "Rainfall so far today since 9:00 am",
                    "Rainfall for the 24 hours prior to 9:00 am"};
        case DayEnd::ten: break;
    }
    return {"Since 10:00 am", "24 Hours prior to 10:00 am", "Rainfall so far today since 10:00 am",
            "Rainfall for the 24 hours prior to 10:00 am"};
}

int starting_scale(WindUnit unit) {
    switch (unit) {
        case WindUnit::ms: return 15;
        case WindUnit::mph:
        case WindUnit::knots: return 30;
        case WindUnit::kph: break;
    }
    return 50;
}

constexpr std::array captions{
    BoxCaption{"TxtForecast", "Forecast"},
    BoxCaption{"Text2(0)", "Outdoor Temp."},
    BoxCaption{"Text2(1)", "Dew Point"},
    BoxCaption{"Text2(2)", "Outdoor Humidity"},
    BoxCaption{"Text2(3)", "Wind Speed Avg."},
    BoxCaption{"Text2(4)", "Barometer"},
    BoxCaption{"Text2(5)", "Peak Rain Rate"},
    BoxCaption{"TxtPeakRain", "Peak Rain Rate"},
    BoxCaption{"Text2(6)", "Wind Speed Gust"},
    BoxCaption{"Text2(7)", "Wind Direction"},
    BoxCaption{"TxtWinDir", "Wind Direction"},
    BoxCaption{"Text2(8)", "Indoor Temp."},
    BoxCaption{"Text2(9)", "Indoor Humidity"},
    BoxCaption{"TxtWindChill", "Wind Chill"},
    BoxCaption{"TxtHeatInd", "Heat Index"},
    BoxCaption{"TxtWindGLH", "Maximum wind gust in the last hour"},
    BoxCaption{"TxtBarTrend", "Barometer Trend"},
    BoxCaption{"TxtRainLH", "Rainfall in the last hour"},
    BoxCaption{"TxtRainTot", "Total Rainfall"},
    BoxCaption{"TxtTempMax", "Maximum Temperature"},
    BoxCaption{"TxtYTempMax", "Maximum Temperature"},
    BoxCaption{"TxtOShi", "Maximum Temperature"},
    BoxCaption{"TxtTempMin", "Minimum Temperature"},
    BoxCaption{"TxtYTempMin", "Minimum Temperature"},
    BoxCaption{"TxtOSLo", "Minimum Temperature"},
    BoxCaption{"TxtHumMax", "Maximum Humidity"},
    BoxCaption{"TxtYHumMax", "Maximum Humidity"},
    BoxCaption{"TxtOsHumHi", "Maximum Humidity"},
    BoxCaption{"TxtHumMin", "Minimum Humidity"},
    BoxCaption{"TxtYHumMin", "Minimum Humidity"},
    BoxCaption{"TxtOsHumLo", "Minimum Humidity"},
    BoxCaption{"TxtGustMax", "Maximum Wind Speed"},
    BoxCaption{"TxtYGustMax", "Maximum Wind Speed"},
    BoxCaption{"TxtWindHiG", "Maximum Wind Speed"},
    BoxCaption{"TxtRainMax", "Max. Peak Rain Rate"},
    BoxCaption{"TxtYRainMax", "Max. Peak Rain Rate"},
    BoxCaption{"TxtBarMax", "Barometer Maximum"},
    BoxCaption{"TxtYBarMax", "Barometer Maximum"},
    BoxCaption{"TxtBarMin", "Barometer Minimum"},
    BoxCaption{"TxtYBarMin", "Barometer Minimum"},
};

}  // namespace

void reset_main_panel(WeatherState& state) {
    MainPanel& panel = state.panel;
    panel = MainPanel{};
    give_tips(panel);

    panel.lblStatus.text = "Program Starting";
    panel.lblStatus.fore = colours::salmon;
    panel.lblLowBattery.text = "Low Battery !";
    for (Box* hidden : {&panel.lblLowBattery, &panel.PicSunny, &panel.PicCloudy, &panel.PicPartly, &panel.PicRain,
                        &panel.PicSnow, &panel.PicStorm}) {
        hidden->visible = false;
    }

    // A background says that the reading has an alarm; the two of the rain have a colour of their own.
    for (std::size_t reading : {0U, 1U, 2U, 4U, 6U, 8U}) panel.Text2[reading].back = colours::reading_back;
    panel.TxtPeakRain().back = colours::rain_back;
    panel.TxtRainToday.back = colours::rain_back;

    start_gauge(panel, state.units.wind);
    reset_main_menu(state.menu);
    show_graph_labels(state);
    reset_additional_panel(state.additional);
}

void start_gauge(MainPanel& panel, WindUnit unit) {
    panel.Gauge1.value = 0;
    panel.Gauge1.maximum = starting_scale(unit);
    panel.lblGaugeMax.text = std::to_string(starting_scale(unit));
}

void set_changeover_captions(MainPanel& panel, const MainSettings& settings) {
    const ChangeoverTexts texts = changeover_texts(settings);
    panel.lblToday.text = panel.lblRainT.text = texts.today;
    panel.lblYesterday.text = panel.lblRainY.text = texts.yesterday;
    panel.lblRainT.tip = texts.rain_tip_today;
    panel.lblRainY.tip = texts.rain_tip_yesterday;
}

std::string_view panel_caption(std::string_view box_name) {
    return caption_in(captions, box_name);
}

}  // namespace nimbry
