#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/ini_file.h"
#include "engine/derived/units.h"
#include "engine/displays/dialog_controls.h"

namespace nimbry {

/// The values of the alarm dialog `frmAlarms`, under the names of its variables and check boxes; a value here is the
/// default of its key in section `Alarms`. Thresholds are singles in base units: degrees C, percent, hPa, m/s, mm per
/// hour, mm. A file may give one that no scroll bar reaches.
struct AlarmsDialog {
    float ATempHi = 37.8F, ATempLo = 1;  ///< outdoor temperature
    float AHumHi = 95, AHumLo = 20;      ///< outdoor humidity
    float ABarHi = 1030, ABarLo = 995;
    float AWindHi = 0;   ///< gust
    float ARainHi = 50;  ///< peak rain rate
    float ARainAm = 25;  ///< rain since the changeover
    float ADewHi = 25, ADewLo = 1;
    float AItempHi = 37.8F, AItempLo = 10;  ///< indoor temperature

    bool chkAOuTempHi = false, chkAOuTempLo = false, chkAOuHumHi = false, chkAOuHumLo = false;
    bool chkABarHi = false, chkABarLo = false, chkAWindHi = false, chkARainHi = false, chkARainAm = false;
    bool chkADewHi = false, chkADewLo = false, chkAInTempHi = false, chkAInTempLo = false;
    bool chkADewCur = false;    ///< key `fADewCu`: the dew point has reached the temperature
    bool chkASound = false;     ///< key `fASound`: `Nimbry.WAV` on an alarm
    bool chkAlarmMail = false;  ///< key `fAMail`: alarms are mailed

    bool operator==(const AlarmsDialog&) const = default;
};

/// The thresholds, by their keys.
enum class AlarmId {
    ATempHi,
    ATempLo,
    AHumHi,
    AHumLo,
    ABarHi,
    ABarLo,
    AWindHi,
    ARainHi,
    ARainAm,
    ADewHi,
    ADewLo,
    AItempHi,
    AItempLo,
};

/// What a threshold is a threshold of: it decides unit, steps and range of its scroll bar.
enum class AlarmQuantity { temperature, humidity, barometer, wind, rain_rate, rain };

/// One threshold with all that belongs to it: its key, the key of its switch, and the two controls of its row (beside
/// them stands the label with the value, "lbl" and the key).
struct AlarmRow {
    std::string_view key;
    float AlarmsDialog::*threshold;
    std::string_view switch_key;
    std::string_view check_box;
    bool AlarmsDialog::*enabled;
    std::string_view scroll_bar;
    AlarmQuantity quantity;
    bool above;               ///< fires above its threshold; else below
    std::string_view phrase;  ///< of its clause in the alarm sentence
};

/// All thresholds, in the order of AlarmId.
[[nodiscard]] std::span<const AlarmRow> alarm_rows();
[[nodiscard]] const AlarmRow& alarm_row(AlarmId id);

/// A check box without a threshold, and its key.
struct AlarmSwitch {
    std::string_view key;
    std::string_view check_box;
    bool AlarmsDialog::*enabled;
};

/// `chkADewCur`, `chkASound` and `chkAlarmMail`.
[[nodiscard]] std::span<const AlarmSwitch> alarm_switches();

/// The dialog's check boxes and scroll bars with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(AlarmsDialog& dialog);

/// Where the scroll bar of a threshold goes, in steps: a tenth of a degree, or a whole unit.
struct AlarmRange {
    int first, last;     ///< steps
    int steps_per_unit;  ///< 10 or 1
};
[[nodiscard]] AlarmRange range_of(AlarmQuantity quantity);

/// A threshold in the unit of display: "37.8 \xB0""C", "95 %", "1030 HPA", "36 km/h", "0.98 In.". The barometer's text
/// is "HPA" for hPa and mB alike.
[[nodiscard]] std::string threshold_text(AlarmQuantity quantity, float threshold, const Units& units);

/// The caption of a row's check box ("&" marks the letter that reaches it): "Alarm if &Wind Gust is more than ...".
/// That of the rain of the day names the changeover in force.
[[nodiscard]] std::string alarm_caption(AlarmId id, const MainSettings& settings);

/// A threshold, or a reading that is compared with one: a single, kept within a thousand million on both sides. A
/// letter E among digits can spell any exponent.
[[nodiscard]] float alarm_single(double value);

/// Section `Alarms`. A threshold is the number its text begins with, a comma being a point; an empty one, or none, is
/// the default. A switch is on when its text is "True".
[[nodiscard]] AlarmsDialog read_alarms(const clsIniFile& ini);

/// Writes all keys of the section with one write, numbers with a point whatever the locale. True on success.
bool write_alarms(clsIniFile& ini, const AlarmsDialog& dialog);

}  // namespace nimbry
