#pragma once

#include <array>

#include "engine/displays/box.h"

namespace nimbry {

/// The boxes of the main window, under their control names. Their fixed tips and captions stand in main_panel.cpp.
struct MainPanel {
    // Header
    Box TxtTime, TxtDate;
    Box lblStatus;         ///< "Program Starting", "Current Conditions" or an error word
    Box Lamp;              ///< control `Picture2(2)`: fore is 255 while data comes in, else 0
    Box lblLowBattery;     ///< "Low Battery !"
    Box PicSunny, PicCloudy, PicPartly, PicRain, PicSnow, PicStorm;  ///< one is visible after the first outlook
    Box TxtForecast;

    /// Present readings: 0 outdoor temperature, 1 dew point, 2 outdoor humidity, 3 average wind, 4 barometer, 5 peak rain rate (`TxtPeakRain`),
    /// 6 gust, 7 gust direction, 8 indoor temperature, 9 indoor humidity.
    std::array<Box, 10> Text2;
    Box TxtWindChill, TxtHeatInd, TxtWinDir, TxtWindGLH, TxtBarTrend;
    Box TxtRainLH, TxtRainToday, TxtRainYest, TxtRainTot;
    Box lblRainT, lblRainY, lblToday, lblYesterday;  ///< they name the changeover in force

    /// The gust bar: value and full scale in the wind unit. The scale grows with a stronger gust and never shrinks.
    struct Gauge {
        double value = 0;
        double maximum = 50;
    } Gauge1;
    Box lblGaugeMax;  ///< the full scale as text

    // Extremes
    Box TxtTempMax, TxtTempMin, TxtHumMax, TxtHumMin, TxtGustMax, TxtRainMax, TxtBarMax, TxtBarMin;
    Box TxtYTempMax, TxtYTempMin, TxtYHumMax, TxtYHumMin, TxtYGustMax, TxtYRainMax, TxtYBarMax, TxtYBarMin;
    Box TxtOShi, TxtOSLo, TxtOsHumHi, TxtOsHumLo, TxtWindHiG;  ///< since the last station reset

    Box& TxtPeakRain() { return Text2[5]; }
    [[nodiscard]] const Box& TxtPeakRain() const { return Text2[5]; }
};

}  // namespace nimbry
