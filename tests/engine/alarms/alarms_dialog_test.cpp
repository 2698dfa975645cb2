#include "engine/alarms/alarms_dialog.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <iterator>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry::test {
namespace {

/// The dialog's values from a file with these lines in section `Alarms`.
AlarmsDialog read(const std::string& lines) {
    VirtualClock clock;
    MemoryFiles files(clock);
    files.put("Nimbry.ini", "[Alarms]\r\n" + lines);
    clsIniFile ini(files, "Nimbry.ini");
    ini.read();
    return read_alarms(ini);
}

struct RowCase {
    AlarmId id;
    const char *key, *switch_key, *check_box, *scroll_bar;
    float fallback;
    int first, last, steps_per_unit;
};

constexpr RowCase row_cases[]{
    {AlarmId::ATempHi, "ATempHi", "fAOuTempHi", "chkAOuTempHi", "hsbATempHi", 37.8F, -400, 600, 10},
    {AlarmId::ATempLo, "ATempLo", "fAOuTempLo", "chkAOuTempLo", "hsbATempLo", 1, -400, 600, 10},
    {AlarmId::AHumHi, "AHumHi", "fAOuHumHi", "chkAOuHumHi", "hsbAHumHi", 95, 0, 100, 1},
    {AlarmId::AHumLo, "AHumLo", "fAOuHumLo", "chkAOuHumLo", "hsbAHumLo", 20, 0, 100, 1},
    {AlarmId::ABarHi, "ABarHi", "fABarHi", "chkABarHi", "hsbABarHi", 1030, 794, 1051, 1},
    {AlarmId::ABarLo, "ABarLo", "fABarLo", "chkABarLo", "hsbABarLo", 995, 794, 1051, 1},
    {AlarmId::AWindHi, "AWindHi", "fAWindHi", "chkAWindHi", "hsbAWindHi", 0, 0, 60, 1},
    {AlarmId::ARainHi, "ARainHi", "fARainHi", "chkARainHi", "hsbARainHi", 50, 0, 1000, 1},
    {AlarmId::ARainAm, "ARainAm", "fARainAm", "chkARainAm", "hsbARainAm", 25, 0, 1000, 1},
    {AlarmId::ADewHi, "ADewHi", "fADewHi", "chkADewHi", "hsbADewHi", 25, -400, 600, 10},
    {AlarmId::ADewLo, "ADewLo", "fADewLo", "chkADewLo", "hsbADewLo", 1, -400, 600, 10},
    {AlarmId::AItempHi, "AItempHi", "fAInTempHi", "chkAInTempHi", "hsbAItempHi", 37.8F, -400, 600, 10},
    {AlarmId::AItempLo, "AItempLo", "fAInTempLo", "chkAInTempLo", "hsbAItempLo", 10, -400, 600, 10},
};

TEST(AlarmRows, HaveTheirKeysControlsDefaultsAndRanges) {
    ASSERT_EQ(alarm_rows().size(), std::size(row_cases));
    for (const RowCase& c : row_cases) {
        SCOPED_TRACE(c.key);
        const AlarmRow& row = alarm_row(c.id);
        EXPECT_EQ(row.key, c.key);
        EXPECT_EQ(row.switch_key, c.switch_key);
        EXPECT_EQ(row.check_box, c.check_box);
        EXPECT_EQ(row.scroll_bar, c.scroll_bar);
        const AlarmRange range = range_of(row.quantity);
        EXPECT_EQ(range.first, c.first);
        EXPECT_EQ(range.last, c.last);
        EXPECT_EQ(range.steps_per_unit, c.steps_per_unit);

        const AlarmsDialog defaults = read("");
        EXPECT_EQ(defaults.*row.threshold, c.fallback);
        EXPECT_FALSE(defaults.*row.enabled);
        const AlarmsDialog changed = read(std::string(c.key) + "=7.5\r\n" + c.switch_key + "=True\r\n");
        AlarmsDialog expected;
        expected.*row.threshold = 7.5F;
        expected.*row.enabled = true;
        EXPECT_EQ(changed, expected) << "these two, and no other";
    }
}

struct SwitchCase {
    const char *key, *check_box;
    bool AlarmsDialog::*enabled;
};

constexpr SwitchCase switch_cases[]{{"fADewCu", "chkADewCur", &AlarmsDialog::chkADewCur},
                                    {"fASound", "chkASound", &AlarmsDialog::chkASound},
                                    {"fAMail", "chkAlarmMail", &AlarmsDialog::chkAlarmMail}};

TEST(AlarmSwitches, HaveTheirKeys) {
    ASSERT_EQ(alarm_switches().size(), std::size(switch_cases));
    for (const SwitchCase& c : switch_cases) {
        SCOPED_TRACE(c.key);
        EXPECT_FALSE(read("").*c.enabled);
        AlarmsDialog expected;
        expected.*c.enabled = true;
        EXPECT_EQ(read(std::string(c.key) + "=True\r\n"), expected);
    }
}

struct NumberCase {
    const char *what, *text;
    float value;
};

TEST(ReadAlarms, MakesANumberOfAnyText) {
    for (const NumberCase& c : {
             NumberCase{"a tenth", "30.5", 30.5F},
             NumberCase{"a decimal comma", "30,5", 30.5F},
             NumberCase{"below zero", "-12.4", -12.4F},
             NumberCase{"blanks around it", "  12 ", 12},
             NumberCase{"in quotes", "\"12\"", 12},
             NumberCase{"more decimals than the bar has", "12.345", 12.345F},
             NumberCase{"nothing", "", 37.8F},
             NumberCase{"blanks only", "   ", 37.8F},
             NumberCase{"blanks in quotes", "\"  \"", 37.8F},
             NumberCase{"a word", "warm", 0},
             NumberCase{"a number and a word", "30C", 30},
             NumberCase{"beyond the bar", "80", 80},
             NumberCase{"beyond what a station can say", "1e30", 1e9F},
             NumberCase{"below it", "-1e30", -1e9F},
             NumberCase{"beyond a double", "1e400", 0},
             NumberCase{"an umlaut", "\xFC", 0},
         }) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(read("ATempHi=" + std::string(c.text) + "\r\n").ATempHi, c.value);
    }
    EXPECT_EQ(read("ATempHi=" + std::string(10000, '9') + "\r\n").ATempHi, 0) << "ten thousand figures are no number";
}

TEST(ReadAlarms, TakesOnlyTrueForTrue) {
    for (const char* text : {"False", "true", "1", "", "Yes", "True."}) {
        EXPECT_FALSE(read("fABarHi=" + std::string(text) + "\r\n").chkABarHi) << text;
    }
    EXPECT_TRUE(read("fABarHi= True \r\n").chkABarHi);
}

TEST(WriteAlarms, AndReadingGiveTheSameValues) {
    VirtualClock clock;
    MemoryFiles files(clock);
    clsIniFile ini(files, "Nimbry.ini");
    AlarmsDialog dialog;
    float value = -41.7F;
    for (const AlarmRow& row : alarm_rows()) {
        dialog.*row.threshold = value;
        dialog.*row.enabled = true;
        value += 13.1F;
    }
    dialog.chkASound = true;
    EXPECT_TRUE(write_alarms(ini, dialog));
    EXPECT_EQ(files.calls().back().operation, "replace");
    EXPECT_EQ(read_alarms(ini), dialog);
    EXPECT_EQ(ini.GetSection("Alarms").size(), 29u);
}

TEST(WriteAlarms, WritesEachStepOfABarAsItReadsItBack) {
    VirtualClock clock;
    MemoryFiles files(clock);
    clsIniFile ini(files, "Nimbry.ini");
    for (int tenths = -400; tenths <= 600; tenths += 7) {
        AlarmsDialog dialog;
        dialog.ATempHi = static_cast<float>(tenths / 10.0);
        write_alarms(ini, dialog);
        const std::string sign = tenths < 0 ? "-" : "";
        const int whole = std::abs(tenths) / 10, part = std::abs(tenths) % 10;
        EXPECT_EQ(ini.GetSetting("Alarms", "ATempHi", ""),
                  sign + std::to_string(whole) + (part == 0 ? "" : "." + std::to_string(part)));
        EXPECT_EQ(read_alarms(ini).ATempHi, dialog.ATempHi);
    }
}

// The texts

struct TextCase {
    AlarmQuantity quantity;
    float threshold;
    const char *metric, *other;  ///< other: Fahrenheit, inches of mercury, inches; wind has a table of its own
};

TEST(ThresholdText, IsInTheUnitOfDisplay) {
    Units metric;
    MainSettings settings;
    settings.fTempF = settings.fBarinhg = settings.fRainin = true;
    const Units other = units_from(settings);
    for (const TextCase& c : {
             TextCase{AlarmQuantity::temperature, 37.8F, "37.8 \260C", "100 \260F"},  // 100.04
             TextCase{AlarmQuantity::temperature, -17.8F, "-17.8 \260C", "0 \260F"},  // -0.04
             TextCase{AlarmQuantity::temperature, -40, "-40 \260C", "-40 \260F"},
             TextCase{AlarmQuantity::temperature, 0, "0 \260C", "32 \260F"},
             TextCase{AlarmQuantity::humidity, 95, "95 %", "95 %"},
             TextCase{AlarmQuantity::barometer, 1030, "1030 HPA", "30.41 In.Hg"},  // 30.4146
             TextCase{AlarmQuantity::barometer, 995, "995 HPA", "29.38 In.Hg"},    // 29.3811
             TextCase{AlarmQuantity::rain_rate, 50, "50 mm/Hr", "1.97 In./Hr"},    // 1.9685
             TextCase{AlarmQuantity::rain_rate, 0, "0 mm/Hr", "0 In./Hr"},
             TextCase{AlarmQuantity::rain, 25, "25 mm", "0.98 In."},       // 0.9843
             TextCase{AlarmQuantity::rain, 1000, "1000 mm", "39.37 In."},  // 39.3701
             TextCase{AlarmQuantity::temperature, 1e9F, "1000000000 \260C", "1800000000 \260F"},
         }) {
        EXPECT_EQ(threshold_text(c.quantity, c.threshold, metric), c.metric);
        EXPECT_EQ(threshold_text(c.quantity, c.threshold, other), c.other);
    }
}

TEST(ThresholdText, OfTheBarometerIsTheSameForMillibarAndHectopascal) {
    MainSettings settings;
    settings.fBarhpa = true;
    EXPECT_EQ(threshold_text(AlarmQuantity::barometer, 1013, units_from(settings)), "1013 HPA");
}

TEST(ThresholdText, OfTheWindIsInItsUnit) {
    struct Case {
        bool MainSettings::*unit;
        const char* text;
    };
    for (const Case& c : {Case{&MainSettings::fWindms, "17 m/s"}, Case{&MainSettings::fWindkph, "61.2 km/h"},
                          Case{&MainSettings::fWindmph, "38 MPH"},        // 38.02781
                          Case{&MainSettings::fWindknots, "33.5 KT"}}) {  // 33.47912
        MainSettings settings;
        settings.*c.unit = true;
        EXPECT_EQ(threshold_text(AlarmQuantity::wind, 17, units_from(settings)), c.text);
    }
}

TEST(AlarmCaptions, BeginWithAlarmIfAndHaveALetterEach) {
    std::set<char> letters;
    for (std::size_t n = 0; n < alarm_rows().size(); ++n) {
        const std::string caption = alarm_caption(static_cast<AlarmId>(n), {});
        EXPECT_EQ(caption.substr(0, 9), "Alarm if ") << caption;
        const bool above = alarm_rows()[n].above;
        EXPECT_TRUE(caption.ends_with(above ? "is more than ..." : "less than ...")) << caption;
        const std::size_t mark = caption.find('&');
        ASSERT_NE(mark, std::string::npos) << caption;
        const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(caption[mark + 1])));
        EXPECT_TRUE(letters.insert(letter).second) << caption;
    }
}

TEST(AlarmCaptions, ThatOfTheRainNamesTheChangeover) {
    MainSettings settings;
    EXPECT_EQ(alarm_caption(AlarmId::ARainAm, settings), "Alarm if &Rainfall since 9.00am is more than ...");
    settings.AddOneHour = true;
    EXPECT_EQ(alarm_caption(AlarmId::ARainAm, settings), "Alarm if &Rainfall since 10.00am is more than ...");
    settings.tmidnight = true;
    EXPECT_EQ(alarm_caption(AlarmId::ARainAm, settings), "Alarm if &Rainfall since midnight is more than ...");
}

// The dialog's model

TEST(AlarmsDialogControls, NameEveryValueOnce) {
    AlarmsDialog dialog;
    const std::vector<DialogControl> controls = dialog_controls(dialog);
    std::set<std::string_view> names;
    std::set<void*> places;
    for (const DialogControl& control : controls) {
        names.insert(control.name);
        places.insert(std::visit([](auto* value) -> void* { return value; }, control.value));
    }
    EXPECT_EQ(controls.size(), 29u);
    EXPECT_EQ(names.size(), 29u);
    EXPECT_EQ(places.size(), 29u);
    for (const SwitchCase& c : switch_cases) EXPECT_TRUE(names.contains(c.check_box)) << c.check_box;
    for (const RowCase& c : row_cases) {
        EXPECT_TRUE(names.contains(c.check_box)) << c.check_box;
        EXPECT_TRUE(names.contains(c.scroll_bar)) << c.scroll_bar;
    }
}

TEST(AlarmsDialogControls, HoldTheValuesOfTheirNames) {
    AlarmsDialog dialog;
    for (const DialogControl& control : dialog_controls(dialog)) {
        if (control.name == "hsbAItempLo") *std::get<float*>(control.value) = 3.5F;
        if (control.name == "chkADewCur") *std::get<bool*>(control.value) = true;
    }
    AlarmsDialog expected;
    expected.AItempLo = 3.5F;
    expected.chkADewCur = true;
    EXPECT_EQ(dialog, expected);
}

}  // namespace
}  // namespace nimbry::test
