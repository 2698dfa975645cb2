#include "engine/station/weather_picture.h"

#include <string_view>

#include "engine/derived/number_text.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

constexpr double snow_limit = 1;
constexpr char falling = '4';

struct Picture {
    Box MainPanel::*box = nullptr;
    std::string_view word;
};

Picture wet_picture(Copy& copy) {
    const Readings& readings = copy.state.readings;
    if (readings.rdatbarotrend == falling) return {&MainPanel::PicStorm, "Storm"};
    const bool cold = sensor_sound(copy, Sensor::outdoor_temperature) && Val(readings.rawostemp) <= snow_limit;
    return cold ? Picture{&MainPanel::PicSnow, "Snow/Sleet"} : Picture{&MainPanel::PicRain, "Rain"};
}

Picture picture_of(Copy& copy) {
    switch (copy.state.readings.rdatoutlook) {
        case 1: return {&MainPanel::PicSunny, "Sunny"};
        case 2: return {&MainPanel::PicCloudy, "Cloudy"};
        case 4: return {&MainPanel::PicPartly, "Partly Cloudy"};
        case 8: return wet_picture(copy);
        default: return {};
    }
}

}  // namespace

void show_weather_picture(Copy& copy) {
    const Picture chosen = picture_of(copy);
    if (chosen.box == nullptr) return;
    MainPanel& panel = copy.state.panel;
    for (Box MainPanel::*box : {&MainPanel::PicSunny, &MainPanel::PicCloudy, &MainPanel::PicPartly, &MainPanel::PicRain,
                                &MainPanel::PicSnow, &MainPanel::PicStorm})
        (panel.*box).visible = box == chosen.box;
    panel.TxtForecast.text = chosen.word;
}

}  // namespace nimbry
