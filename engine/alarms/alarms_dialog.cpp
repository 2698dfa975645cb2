#include "engine/alarms/alarms_dialog.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/derived/number_text.h"
#include "engine/records/changeover_word.h"

namespace nimbry {
namespace {

using D = AlarmsDialog;
using Q = AlarmQuantity;

constexpr std::string_view section = "Alarms";
constexpr bool above = true;
constexpr bool below = false;

constexpr std::array rows{
    AlarmRow{"ATempHi", &D::ATempHi, "fAOuTempHi", "chkAOuTempHi", &D::chkAOuTempHi, "hsbATempHi", Q::temperature,
             above, "outside temperature is above"},
    AlarmRow{"ATempLo", &D::ATempLo, "fAOuTempLo", "chkAOuTempLo", &D::chkAOuTempLo, "hsbATempLo", Q::temperature,
             below, "outside temperature is below"},
    AlarmRow{"AHumHi", &D::AHumHi, "fAOuHumHi", "chkAOuHumHi", &D::chkAOuHumHi, "hsbAHumHi", Q::humidity, above,
             "humidity is above"},
    AlarmRow{"AHumLo", &D::AHumLo, "fAOuHumLo", "chkAOuHumLo", &D::chkAOuHumLo, "hsbAHumLo", Q::humidity, below,
             "humidity is below"},
    AlarmRow{"ABarHi", &D::ABarHi, "fABarHi", "chkABarHi", &D::chkABarHi, "hsbABarHi", Q::barometer, above,
             "barometric pressure is above"},
    AlarmRow{"ABarLo", &D::ABarLo, "fABarLo", "chkABarLo", &D::chkABarLo, "hsbABarLo", Q::barometer, below,
             "barometric pressure is below"},
    AlarmRow{"AWindHi", &D::AWindHi, "fAWindHi", "chkAWindHi", &D::chkAWindHi, "hsbAWindHi", Q::wind, above,
             "wind speed is above"},
    AlarmRow{"ARainHi", &D::ARainHi, "fARainHi", "chkARainHi", &D::chkARainHi, "hsbARainHi", Q::rain_rate, above,
             "peak rainfall rate is above"},
    AlarmRow{"ARainAm", &D::ARainAm, "fARainAm", "chkARainAm", &D::chkARainAm, "hsbARainAm", Q::rain, above,
             "rainfall amount since"},
    AlarmRow{"ADewHi", &D::ADewHi, "fADewHi", "chkADewHi", &D::chkADewHi, "hsbADewHi", Q::temperature, above,
             "dew point is above"},
    AlarmRow{"ADewLo", &D::ADewLo, "fADewLo", "chkADewLo", &D::chkADewLo, "hsbADewLo", Q::temperature, below,
             "dew point is below"},
    AlarmRow{"AItempHi", &D::AItempHi, "fAInTempHi", "chkAInTempHi", &D::chkAInTempHi, "hsbAItempHi", Q::temperature,
             above, "indoor temperature is above"},
    AlarmRow{"AItempLo", &D::AItempLo, "fAInTempLo", "chkAInTempLo", &D::chkAInTempLo, "hsbAItempLo", Q::temperature,
             below, "indoor temperature is below"},
};

constexpr std::array switches{
    AlarmSwitch{"fADewCu", "chkADewCur", &D::chkADewCur},
    AlarmSwitch{"fASound", "chkASound", &D::chkASound},
    AlarmSwitch{"fAMail", "chkAlarmMail", &D::chkAlarmMail},
};

float read_threshold(const clsIniFile& ini, std::string_view key, float fallback) {
    const std::string text = ini.GetSetting(section, key, "");
    return trimmed(text).empty() ? fallback : alarm_single(Val(repcomma(text)));
}

}  // namespace

std::span<const AlarmRow> alarm_rows() {
    return rows;
}

const AlarmRow& alarm_row(AlarmId id) {
    return rows[static_cast<std::size_t>(id)];
}

std::span<const AlarmSwitch> alarm_switches() {
    return switches;
}

std::vector<DialogControl> dialog_controls(AlarmsDialog& dialog) {
    std::vector<DialogControl> controls;
    for (const AlarmRow& row : rows) {
        controls.push_back({row.check_box, &(dialog.*row.enabled)});
        controls.push_back({row.scroll_bar, &(dialog.*row.threshold)});
    }
    for (const AlarmSwitch& which : switches) controls.push_back({which.check_box, &(dialog.*which.enabled)});
    return controls;
}

AlarmRange range_of(AlarmQuantity quantity) {
    switch (quantity) {
        case Q::temperature: return {-400, 600, 10};
        case Q::humidity: return {0, 100, 1};
        case Q::barometer: return {794, 1051, 1};
        case Q::wind: return {0, 60, 1};
        case Q::rain_rate:
        case Q::rain: break;
    }
    return {0, 1000, 1};
}

std::string threshold_text(AlarmQuantity quantity, float threshold, const Units& units) {
    const std::string text = numtext(threshold);
    const double value = Val(text);
    const bool inches = units.rain == RainUnit::inches;
    switch (quantity) {
        case Q::temperature:
            return units.temperature == TemperatureUnit::celsius ? text + degrees('C')
                                                                 : numtext(roundnst(value)) + degrees('F');
        case Q::humidity: return text + " %";
        case Q::barometer:
            return numtext(Round(value * units.bcorr, 2)) +
                   (units.barometer == BarometerUnit::inhg ? " In.Hg" : " HPA");
        case Q::wind:
            return numtext(Round(value * units.wcorr, 1)) +
                   (units.wind == WindUnit::ms ? " m/s" : " " + units.wind_text);
        case Q::rain_rate: return numtext(Round(value * units.rcorr, 2)) + (inches ? " In./Hr" : " mm/Hr");
        case Q::rain: break;
    }
    return numtext(Round(value * units.rcorr, 2)) + (inches ? " In." : " mm");
}

std::string alarm_caption(AlarmId id, const MainSettings& settings) {
    switch (id) {
        case AlarmId::ATempHi: return "Alarm if &Outdoor Temperature is more than ...";
        case AlarmId::ATempLo: return "Alarm if Outdoor &Temperature is less than ...";
        case AlarmId::AHumHi: return "Alarm if Outdoor &Humidity is more than ...";
        case AlarmId::AHumLo: return "Alarm if Outdoor Humidit&y is less than ...";
        case AlarmId::ABarHi: return "Alarm if &Barometer is more than ...";
        case AlarmId::ABarLo: return "Alarm if Barometer is &less than ...";
        case AlarmId::AWindHi: return "Alarm if &Wind Gust is more than ...";
        case AlarmId::ARainHi: return "Alarm if Pea&k Rain Rate is more than ...";
        case AlarmId::ADewHi: return "Alarm if &Dew Point is more than ...";
        case AlarmId::ADewLo: return "Alarm if Dew &Point is less than ...";
        case AlarmId::AItempHi: return "Alarm if &Indoor Temperature is more than ...";
        case AlarmId::AItempLo: return "Alarm if I&ndoor Temperature is less than ...";
        case AlarmId::ARainAm: break;
    }
    return "Alarm if &Rainfall since" + std::string(changeover_word(settings)) + "is more than ...";
}

float alarm_single(double value) {
    constexpr double limit = 1e9;
    return static_cast<float>(std::clamp(value, -limit, limit));
}

AlarmsDialog read_alarms(const clsIniFile& ini) {
    AlarmsDialog dialog;
    for (const AlarmRow& row : rows) {
        dialog.*row.threshold = read_threshold(ini, row.key, dialog.*row.threshold);
        dialog.*row.enabled = ini.GetFlag(section, row.switch_key, false);
    }
    for (const AlarmSwitch& which : switches) dialog.*which.enabled = ini.GetFlag(section, which.key, false);
    return dialog;
}

bool write_alarms(clsIniFile& ini, const AlarmsDialog& dialog) {
    std::vector<clsIniFile::Setting> settings;
    const auto add = [&settings](std::string_view key, std::string value) {
        settings.push_back({std::string(section), std::string(key), std::move(value)});
    };
    for (const AlarmRow& row : rows) {
        add(row.key, numtext(dialog.*row.threshold));
        add(row.switch_key, flag_text(dialog.*row.enabled));
    }
    for (const AlarmSwitch& which : switches) add(which.key, flag_text(dialog.*which.enabled));
    return ini.SaveSettings(settings);
}

}  // namespace nimbry
