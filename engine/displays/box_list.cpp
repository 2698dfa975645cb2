#include "engine/displays/box_list.h"

#include <array>

#include "engine/core/weather_state.h"
#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

constexpr std::array reading_names{std::string_view("Text2(0)"), std::string_view("Text2(1)"),
                                   std::string_view("Text2(2)"), std::string_view("Text2(3)"),
                                   std::string_view("Text2(4)"), std::string_view("Text2(5)"),
                                   std::string_view("Text2(6)"), std::string_view("Text2(7)"),
                                   std::string_view("Text2(8)"), std::string_view("Text2(9)")};
constexpr std::array button_names{std::string_view("fmb(0)"), std::string_view("fmb(1)"), std::string_view("fmb(2)"),
                                  std::string_view("fmb(3)"), std::string_view("fmb(4)"), std::string_view("fmb(5)"),
                                  std::string_view("fmb(6)")};

constexpr std::array pane_names{std::string_view("gPicture1(0)"), std::string_view("gPicture1(1)"),
                                std::string_view("gPicture1(2)"), std::string_view("gPicture1(3)"),
                                std::string_view("gPicture1(4)"), std::string_view("gPicture1(5)")};

// Each of these adds one window's part. `#member` keeps a name and its box from parting.
#define NIMBRY_BOX(kind, member) add(#member, BoxKind::kind, group.member)

template <class Add, class Panel>
void add_panel_readings(Add add, Panel& group) {
    NIMBRY_BOX(reading, TxtTime);
    NIMBRY_BOX(reading, TxtDate);
    NIMBRY_BOX(reading, TxtForecast);
    for (std::size_t n = 0; n < group.Text2.size(); ++n) add(reading_names[n], BoxKind::reading, group.Text2[n]);
    add("TxtPeakRain", BoxKind::reading, group.TxtPeakRain());
    NIMBRY_BOX(reading, TxtWindChill);
    NIMBRY_BOX(reading, TxtHeatInd);
    NIMBRY_BOX(reading, TxtWinDir);
    NIMBRY_BOX(reading, TxtWindGLH);
    NIMBRY_BOX(reading, TxtBarTrend);
    NIMBRY_BOX(reading, TxtRainLH);
    NIMBRY_BOX(reading, TxtRainToday);
    NIMBRY_BOX(reading, TxtRainYest);
    NIMBRY_BOX(reading, TxtRainTot);
    NIMBRY_BOX(reading, TxtTempMax);
    NIMBRY_BOX(reading, TxtTempMin);
    NIMBRY_BOX(reading, TxtHumMax);
    NIMBRY_BOX(reading, TxtHumMin);
    NIMBRY_BOX(reading, TxtGustMax);
    NIMBRY_BOX(reading, TxtRainMax);
    NIMBRY_BOX(reading, TxtBarMax);
    NIMBRY_BOX(reading, TxtBarMin);
    NIMBRY_BOX(reading, TxtYTempMax);
    NIMBRY_BOX(reading, TxtYTempMin);
    NIMBRY_BOX(reading, TxtYHumMax);
    NIMBRY_BOX(reading, TxtYHumMin);
    NIMBRY_BOX(reading, TxtYGustMax);
    NIMBRY_BOX(reading, TxtYRainMax);
    NIMBRY_BOX(reading, TxtYBarMax);
    NIMBRY_BOX(reading, TxtYBarMin);
    NIMBRY_BOX(reading, TxtOShi);
    NIMBRY_BOX(reading, TxtOSLo);
    NIMBRY_BOX(reading, TxtOsHumHi);
    NIMBRY_BOX(reading, TxtOsHumLo);
    NIMBRY_BOX(reading, TxtWindHiG);
}

template <class Add, class Panel>
void add_panel_labels_and_pictures(Add add, Panel& group) {
    NIMBRY_BOX(label, lblStatus);
    NIMBRY_BOX(label, lblLowBattery);
    NIMBRY_BOX(label, lblToday);
    NIMBRY_BOX(label, lblYesterday);
    NIMBRY_BOX(label, lblRainT);
    NIMBRY_BOX(label, lblRainY);
    NIMBRY_BOX(label, lblGaugeMax);
    NIMBRY_BOX(label, gLabel12);
    NIMBRY_BOX(label, gLabel13);
    NIMBRY_BOX(label, gLabel14);
    NIMBRY_BOX(label, gLabel15);
    add("Picture2(2)", BoxKind::picture, group.Lamp);
    NIMBRY_BOX(picture, PicSunny);
    NIMBRY_BOX(picture, PicCloudy);
    NIMBRY_BOX(picture, PicPartly);
    NIMBRY_BOX(picture, PicRain);
    NIMBRY_BOX(picture, PicSnow);
    NIMBRY_BOX(picture, PicStorm);
    NIMBRY_BOX(picture, WindPic);
    for (std::size_t n = 0; n < group.gPicture1.size(); ++n) add(pane_names[n], BoxKind::picture, group.gPicture1[n]);
}

template <class Add, class Menu>
void add_menu(Add add, Menu& group) {
    NIMBRY_BOX(menu_entry, mnuExit);
    NIMBRY_BOX(menu_entry, mnuExit1);
    NIMBRY_BOX(menu_entry, mnuSetup);
    NIMBRY_BOX(menu_entry, SetupComms);
    NIMBRY_BOX(menu_entry, SetupUnits);
    NIMBRY_BOX(menu_entry, mnuAlarms);
    NIMBRY_BOX(menu_entry, mnuInternet);
    NIMBRY_BOX(menu_entry, mnuLatLong);
    NIMBRY_BOX(menu_entry, mnuEditComment);
    NIMBRY_BOX(menu_entry, mnuEditComment2);
    NIMBRY_BOX(menu_entry, mnuEditDSR);
    NIMBRY_BOX(menu_entry, mnuLogs);
    NIMBRY_BOX(menu_entry, mnuDisplayLog);
    NIMBRY_BOX(menu_entry, mnuDisplayAlmanac);
    NIMBRY_BOX(menu_entry, mnuProgLog);
    NIMBRY_BOX(menu_entry, mnuClearProgLog);
    NIMBRY_BOX(menu_entry, mnulogFTP);
    NIMBRY_BOX(menu_entry, mnulogMail);
    NIMBRY_BOX(menu_entry, mnuLogWU);
    NIMBRY_BOX(menu_entry, mnuLogHW);
    NIMBRY_BOX(menu_entry, mnuLogAPRS);
    NIMBRY_BOX(menu_entry, mnuDisplay);
    add("Form1.mnuHide", BoxKind::menu_entry, group.mnuHide);
    NIMBRY_BOX(menu_entry, mnusystray);
    NIMBRY_BOX(menu_entry, mnuCpop);
    NIMBRY_BOX(menu_entry, mnuDisableGraphs);
    NIMBRY_BOX(menu_entry, mnuInGraphs);
    NIMBRY_BOX(menu_entry, mnuNoErrorPop);
    NIMBRY_BOX(menu_entry, mnuNoCCPop);
    NIMBRY_BOX(menu_entry, mnuNoFTPPop);
    NIMBRY_BOX(menu_entry, mnuNoMailPop);
    NIMBRY_BOX(menu_entry, mnuResetGraphs);
    NIMBRY_BOX(menu_entry, mnuBIG);
    NIMBRY_BOX(menu_entry, mnuFTPdebug);
    NIMBRY_BOX(menu_entry, mnuAdditional);
    NIMBRY_BOX(menu_entry, mnuReports);
    NIMBRY_BOX(menu_entry, mnuAlMonth);
    NIMBRY_BOX(menu_entry, mnuAutoReport);
    NIMBRY_BOX(menu_entry, mnuHideNow);
    NIMBRY_BOX(menu_entry, mnuRestore);
    NIMBRY_BOX(menu_entry, mnuHelp);
    NIMBRY_BOX(menu_entry, mnuFHelp);
    NIMBRY_BOX(menu_entry, mnuAbout);
    for (std::size_t n = 0; n < group.fmb.size(); ++n) add(button_names[n], BoxKind::button, group.fmb[n]);
}

template <class Add, class Panel>
void add_additional(Add add, Panel& group) {
    NIMBRY_BOX(reading, txtWetBulb);
    NIMBRY_BOX(reading, txtWBDep);
    NIMBRY_BOX(reading, txtCloudBase);
    NIMBRY_BOX(reading, txtMaxDew);
    NIMBRY_BOX(reading, txtMinDew);
    NIMBRY_BOX(reading, txtMinWC);
    NIMBRY_BOX(reading, txtMaxHI);
    NIMBRY_BOX(reading, txtMaxInTemp);
    NIMBRY_BOX(reading, txtMinInTemp);
    NIMBRY_BOX(reading, txtYMaxDew);
    NIMBRY_BOX(reading, txtYMinDew);
    NIMBRY_BOX(reading, txtYMinWC);
    NIMBRY_BOX(reading, txtYMaxHI);
    NIMBRY_BOX(reading, txtYMaxInTemp);
    NIMBRY_BOX(reading, txtYMinInTemp);
    NIMBRY_BOX(reading, txtDSR);
    NIMBRY_BOX(reading, txtAmtLastRain);
    NIMBRY_BOX(reading, txtRainDays);
    NIMBRY_BOX(reading, txtMnthTotal);
    NIMBRY_BOX(reading, TxtSunrise);
    NIMBRY_BOX(reading, TxtSunset);
    NIMBRY_BOX(reading, TxtSunriseTom);
    NIMBRY_BOX(reading, TxtSunsetTom);
    NIMBRY_BOX(reading, txtTwiStart);
    NIMBRY_BOX(reading, txtTwiEnd);
    NIMBRY_BOX(reading, txtSolarNoon);
    NIMBRY_BOX(reading, txtDayLength);
    NIMBRY_BOX(reading, txtVisLight);
    NIMBRY_BOX(reading, txtStarted);
    NIMBRY_BOX(reading, txtRunning);
    NIMBRY_BOX(label, lblNoSun);
    NIMBRY_BOX(picture, Picture1);
    add("NimbryAdditional.mnuHide", BoxKind::menu_entry, group.mnuHide);
    add("NimbryAdditional.Command1", BoxKind::button, group.Command1);
}

template <class Add, class Big>
void add_big_display(Add add, Big& group) {
    NIMBRY_BOX(reading, txtDisTimDat);
    NIMBRY_BOX(label, Label9);
    NIMBRY_BOX(label, Label10);
}

#undef NIMBRY_BOX

std::string_view without_window(std::string_view name) {
    return name.substr(name.find('.') + 1);
}

template <class List>
auto found(const List& list, std::string_view name) -> decltype(list.front().box) {
    for (const auto& entry : list) {
        if (entry.name == name) return entry.box;
    }
    for (const auto& entry : list) {
        if (without_window(entry.name) == name) return entry.box;
    }
    return nullptr;
}

template <class Entry, class State>
std::vector<Entry> listed(State& state) {
    std::vector<Entry> list;
    const auto add = [&list](std::string_view name, BoxKind kind, auto& box) { list.push_back({name, kind, &box}); };
    add_panel_readings(add, state.panel);
    add_panel_labels_and_pictures(add, state.panel);
    add_menu(add, state.menu);
    add_additional(add, state.additional);
    add_big_display(add, state.big);
    for (const BigReading& reading : big_readings()) add(reading.name, BoxKind::reading, *found(list, reading.of));
    return list;
}

}  // namespace

std::vector<NamedBox> named_boxes(WeatherState& state) {
    return listed<NamedBox>(state);
}

std::vector<NamedConstBox> named_boxes(const WeatherState& state) {
    return listed<NamedConstBox>(state);
}

Box* find_box(WeatherState& state, std::string_view name) {
    return found(named_boxes(state), name);
}

const Box* find_box(const WeatherState& state, std::string_view name) {
    return found(named_boxes(state), name);
}

const Box* find_box(const std::vector<NamedConstBox>& boxes, std::string_view name) {
    return found(boxes, name);
}

std::string text_of(const std::vector<NamedConstBox>& boxes, std::string_view name) {
    const Box* box = find_box(boxes, name);
    return box == nullptr ? std::string() : trimmed(box->text);
}

std::string_view caption_of(std::string_view box_name) {
    const std::string_view caption = panel_caption(box_name);
    return caption.empty() ? additional_caption(box_name) : caption;
}

std::string object_name(std::string_view box_name) {
    std::string name(without_window(box_name));
    if (const std::size_t bracket = name.find('('); bracket != std::string::npos) {
        name[bracket] = '_';
        name.pop_back();
    }
    return name;
}

}  // namespace nimbry
