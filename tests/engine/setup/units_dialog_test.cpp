#include "engine/setup/units_dialog.h"

#include <gtest/gtest.h>

#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using std::chrono::local_days;
using std::chrono::seconds;

struct UnitsDialogTest : testing::Test {
    test::BareCopy world;
    MainSettings& settings = world.state.settings;

    UnitsDialog opened() { return units_dialog(settings); }
    std::string key(const char* name) { return world.ini.GetSetting("Main", name, "(none)"); }
};

TEST_F(UnitsDialogTest, ItOpensWithTheSettingsInForce) {
    EXPECT_EQ(opened(), UnitsDialog{}) << "the defaults of both are the same";
    settings.fTempC = settings.fBarmb = settings.fRainmm = settings.fWindkph = false;
    settings.fTempF = settings.fBarinhg = settings.fRainin = settings.fWindknots = true;
    settings.alRoll = "905";
    settings.newchill = false;
    const UnitsDialog dialog = opened();
    EXPECT_TRUE(dialog.optTempF && dialog.optBarinhg && dialog.optRainin && dialog.optWindknots && dialog.OptLast);
    EXPECT_FALSE(dialog.optTempC || dialog.optBarmb || dialog.optBarhpa || dialog.optRainmm || dialog.optWindkph ||
                 dialog.optWindms || dialog.optWindmph || dialog.OptFirst || dialog.chkNewWC);
}

TEST_F(UnitsDialogTest, EveryUnitGoesToItsOwnKeyAndIntoForce) {
    UnitsDialog dialog = opened();
    dialog.optTempC = dialog.optBarmb = dialog.optRainmm = dialog.optWindkph = false;
    dialog.optTempF = dialog.optBarhpa = dialog.optRainin = dialog.optWindmph = true;
    accept_units(world.copy, dialog);
    for (const char* on : {"fTempF", "fBarhpa", "fRainin", "fWindmph"}) EXPECT_EQ(key(on), "True") << on;
    for (const char* off : {"fTempC", "fBarmb", "fBarinhg", "fRainmm", "fWindkph", "fWindms", "fWindknots"})
        EXPECT_EQ(key(off), "False") << off;
    EXPECT_EQ(world.state.units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_EQ(world.state.units.barometer_text, "hPa");
    EXPECT_EQ(world.state.units.rain_text, "In.");
    EXPECT_EQ(world.state.units.wind_text, "MPH");
    EXPECT_EQ(opened(), dialog);
}

TEST_F(UnitsDialogTest, TheOtherSettingsOfTheSectionAreWrittenWithThem) {
    settings.ErrorPop = true;
    settings.LogMin = 7;
    accept_units(world.copy, opened());
    EXPECT_EQ(key("ErrorPop"), "True");
    EXPECT_EQ(key("LogMin"), "7");
}

TEST_F(UnitsDialogTest, AChangedUnitMarksTheRecordsAndNothingElseDoes) {
    UnitsDialog dialog = opened();
    dialog.chkNewWC = false;
    dialog.OptFirst = false;
    dialog.OptLast = true;
    accept_units(world.copy, dialog);
    EXPECT_FALSE(world.state.records.unitschanged) << "wind chill and rollover are no units";
    EXPECT_EQ(key("newchill"), "False");

    dialog.optBarmb = false;
    dialog.optBarhpa = true;
    accept_units(world.copy, dialog);
    EXPECT_TRUE(world.state.records.unitschanged) << "hPa and mB are the same size, and two units all the same";
}

TEST_F(UnitsDialogTest, EachOfTheElevenOptionsIsAUnitOfItsOwn) {
    int units = 0;
    const UnitsDialog before;
    UnitsDialog dialog;
    for (const DialogControl& control : dialog_controls(dialog)) {
        bool& option = *std::get<bool*>(control.value);
        option = !option;
        units += units_differ(before, dialog) ? 1 : 0;
        option = !option;
    }
    EXPECT_EQ(units, 11);
    EXPECT_EQ(dialog_controls(dialog).size(), 14U);
}

TEST_F(UnitsDialogTest, DoneClicks) {
    accept_units(world.copy, opened());
    EXPECT_EQ(world.sounds.played, std::vector<std::string>{"click.WAV"});
}

TEST_F(UnitsDialogTest, ApplyingSettingsTouchesNoRecord) {
    settings.fWindkph = false;
    settings.fWindms = true;
    settings.tmidnight = true;
    settings.tnineam = false;
    applyunits(world.copy);
    EXPECT_FALSE(world.state.records.unitschanged);
    EXPECT_TRUE(world.sounds.played.empty());
    EXPECT_EQ(world.state.units.wind_text, "m/S");
    EXPECT_EQ(world.state.panel.lblGaugeMax.text, "15") << "the scale of metres per second";
    EXPECT_EQ(world.state.panel.lblRainT.text, "Since Midnight");
    EXPECT_EQ(key("tmidnight"), "True");
}

TEST_F(UnitsDialogTest, TheGustBarKeepsWhatItHasGrownToWhileItsUnitStays) {
    world.state.panel.Gauge1.maximum = 63;
    accept_units(world.copy, opened());
    EXPECT_EQ(world.state.panel.Gauge1.maximum, 63);
}

TEST_F(UnitsDialogTest, LoggingAndAnAlmanacAreWarnedOfInThisOrder) {
    EXPECT_TRUE(units_warnings(world.copy).empty());
    world.files.put("nbextreme.log", "a row\r\n");
    ASSERT_EQ(units_warnings(world.copy).size(), 1U);
    settings.fwrtlog = true;
    const auto both = units_warnings(world.copy);
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0].title, "Nimbry");
    EXPECT_EQ(both[0].text,
              "Logging is enabled and changing units will affect the log file.\r\n"
              "You may wish to close and save your log before proceeding");
    EXPECT_EQ(both[1].title, "Nimbry");
    EXPECT_EQ(both[1].text,
              "Changing the units will affect your almanac.\r\n"
              "You may wish to archive your almanac file (nbextreme.log) before proceeding");
}

struct Rollover : UnitsDialogTest {
    // The station says 2 October 2026, 00:10; the almanac of September was archived `age` ago.
    void archived(const std::string& name, seconds age) {
        world.state.readings.dtvar = local_days{std::chrono::October / 2 / 2026} + seconds{600};
        world.files.put(name, "rows");
        world.clock.set_computer_time(*world.files.modified(name) + age);
    }
    std::string clicked(bool first_day) {
        const auto box = choose_rollover(world.copy, dialog, first_day);
        return box ? box->text : "";
    }
    UnitsDialog dialog;
};

constexpr const char* rolled_over =
    "The almanac has been rolled over and\r\narchived within the last 24 hours.\r\nTo avoid a multiple rollover, "
    "please "
    "wait\r\nmore than 24 hours from the last\r\nchangeover before altering this setting.";

TEST_F(Rollover, TheLastDayIs905MinutesAndTheFirstIsFive) {
    EXPECT_EQ(clicked(false), "");
    EXPECT_TRUE(dialog.OptLast && !dialog.OptFirst);
    accept_units(world.copy, dialog);
    EXPECT_EQ(key("alRoll"), "905");
    EXPECT_EQ(clicked(true), "");
    accept_units(world.copy, dialog);
    EXPECT_EQ(key("alRoll"), "5");
}

TEST_F(Rollover, ANumberOfOnesOwnIsTheLastDayAndStays) {
    settings.alRoll = "1000";
    dialog = opened();
    EXPECT_TRUE(dialog.OptLast);
    accept_units(world.copy, dialog);
    EXPECT_EQ(key("alRoll"), "1000");
}

TEST_F(Rollover, WithinADayAndASecondOfAnArchiveTheOptionStays) {
    archived("alSep26.csv", seconds{86400});
    EXPECT_EQ(clicked(false), rolled_over);
    EXPECT_EQ(dialog, UnitsDialog{});
}

TEST_F(Rollover, OneSecondLaterItIsFree) {
    archived("alSep26.csv", seconds{86401});
    EXPECT_EQ(clicked(false), "");
}

TEST_F(Rollover, AnArchiveFromTheFutureIsYoungerThanADay) {
    archived("alSep26.csv", seconds{-3600});
    EXPECT_EQ(clicked(false), rolled_over);
}

TEST_F(Rollover, TheArchiveInTheLocalSaveFolderCountsAsWell) {
    world.state.publish.NimbryFTPSetup.txtLocalPath = "/home/me/weather";
    archived("/home/me/weather/alSep26.csv", seconds{60});
    EXPECT_EQ(clicked(false), rolled_over);
}

TEST_F(Rollover, AYoungOneThereCountsBesideAnOldOneHere) {
    world.state.publish.NimbryFTPSetup.txtLocalPath = "/home/me/weather";
    archived("alSep26.csv", std::chrono::days{40});
    world.files.put("/home/me/weather/alSep26.csv", "rows");
    EXPECT_EQ(clicked(false), rolled_over);
}

TEST_F(Rollover, TheMonthIsThatOfTwoDaysBefore) {
    archived("alSep26.csv", seconds{60});
    world.state.readings.dtvar = local_days{std::chrono::October / 3 / 2026} - seconds{1};
    EXPECT_EQ(clicked(false), rolled_over) << "two days before the last second of the 2nd is September";
    world.state.readings.dtvar = local_days{std::chrono::October / 3 / 2026};
    EXPECT_EQ(clicked(false), "") << "two days before the 3rd is October";
}

TEST_F(Rollover, AnArchiveOfAnotherMonthDoesNotCount) {
    archived("alOct26.csv", seconds{60});
    EXPECT_EQ(clicked(false), "");
}

TEST_F(Rollover, TheYearIsThatOfTwoDaysBeforeToo) {
    archived("alDec26.csv", seconds{60});
    world.state.readings.dtvar = local_days{std::chrono::January / 1 / 2027} + seconds{600};
    EXPECT_EQ(clicked(false), rolled_over);
}

TEST_F(Rollover, BeforeTheStationHasToldItsDateThereIsNoGuard) {
    archived("alSep26.csv", seconds{60});
    world.state.readings.dtvar.reset();
    EXPECT_EQ(clicked(false), "");
}

TEST_F(Rollover, AClickOnTheChosenOptionAsksNothing) {
    archived("alSep26.csv", seconds{60});
    EXPECT_EQ(clicked(true), "");
}

}  // namespace
}  // namespace nimbry
