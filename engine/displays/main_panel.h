#pragma once

#include <array>
#include <string_view>

#include "engine/core/main_settings.h"
#include "engine/derived/units.h"
#include "engine/displays/box.h"

namespace nimbry {

struct WeatherState;

/// The boxes of the main window, under their control names. Their tips and starting values stand in main_panel.cpp.
struct MainPanel {
    // Header
    Box TxtTime, TxtDate;
    Box lblStatus;      ///< "Program Starting", "Current Conditions" or an error word
    Box Lamp;           ///< control `Picture2(2)`: fore is 255 while data comes in, else 0
    Box lblLowBattery;  ///< "Low Battery !"; visible while the station reports it
    Box PicSunny, PicCloudy, PicPartly, PicRain, PicSnow, PicStorm;  ///< one is visible after the first outlook
    Box TxtForecast;

    /// Present readings: 0 outdoor temperature, 1 dew point, 2 outdoor humidity, 3 average wind, 4 barometer,
    /// 5 peak rain rate (`TxtPeakRain`), 6 gust, 7 gust direction, 8 indoor temperature, 9 indoor humidity.
    std::array<Box, 10> Text2;
    Box TxtWindChill, TxtHeatInd, TxtWinDir, TxtWindGLH, TxtBarTrend;
    Box WindPic;  ///< the rose; its needle stands at Readings::adirint, its mark at Readings::gdirint
    Box TxtRainLH, TxtRainToday, TxtRainYest, TxtRainTot;
    Box lblRainT, lblRainY, lblToday, lblYesterday;  ///< they name the changeover in force

    /// The gust bar: value and full scale in the wind unit. The scale grows with a stronger gust and never shrinks.
    struct Gauge {
        double value = 0;
        double maximum = 50;
    } Gauge1;
    Box lblGaugeMax;  ///< the full scale as text

    // Graphs
    Box gLabel12;                      ///< title of the graph in the main pane, and the selector (graphs/graph_view.h)
    Box gLabel13, gLabel14, gLabel15;  ///< its legends; hidden when it has fewer
    std::array<Box, 6> gPicture1;      ///< the main pane and the five small ones; what they show is GraphState::panes
    static constexpr const char* main_graph_tip = "Main display graph  -  values are updated every minute";

    // Extremes
    Box TxtTempMax, TxtTempMin, TxtHumMax, TxtHumMin, TxtGustMax, TxtRainMax, TxtBarMax, TxtBarMin;
    Box TxtYTempMax, TxtYTempMin, TxtYHumMax, TxtYHumMin, TxtYGustMax, TxtYRainMax, TxtYBarMax, TxtYBarMin;
    Box TxtOShi, TxtOSLo, TxtOsHumHi, TxtOsHumLo, TxtWindHiG;  ///< since the last station reset

    Box& TxtPeakRain() { return Text2[5]; }
    [[nodiscard]] const Box& TxtPeakRain() const { return Text2[5]; }
};

/// Puts every display of the program where the window's load leaves it: boxes empty with their tips, "Program
/// Starting", pictures hidden, the menu's captions with what needs a first train switched off, the additional data
/// window's labels. The gauge gets the starting scale of the wind unit in force. Settings are applied later
/// (set_changeover_captions(), apply_menu_checks() in main_menu.h, start_gauge()).
void reset_main_panel(WeatherState& state);

/// Gives the gust bar the starting scale of a wind unit (15 m/S, 50 km/h, 30 MPH, 30 KT), with its label, and value 0:
/// at the start, and when the wind unit changes.
void start_gauge(MainPanel& panel, WindUnit unit);

/// Puts the changeover in force into the captions and tips that name it: "Since Midnight", "24 Hours prior to 9:00 am"
/// ...
void set_changeover_captions(MainPanel& panel, const MainSettings& settings);

/// The fixed caption that stands by a box of the main window ("Outdoor Temp." by "Text2(0)"); empty for a box that has
/// none, or whose caption is a label of its own (`TxtRainToday` has `lblRainT`).
[[nodiscard]] std::string_view panel_caption(std::string_view box_name);

}  // namespace nimbry
