#include "engine/control/verbs_setup.h"

#include "tests/engine/control/verbs_fixture.h"

namespace nimbry::test {
namespace {

class SetupVerbs : public VerbsTest {
protected:
    [[nodiscard]] std::string place() {
        return world.setting("Main", "Latitude") + " " + world.setting("Main", "Longitude");
    }
};

TEST_F(SetupVerbs, LocationTakesDecimalDegreesWithSouthAndWestNegative) {
    EXPECT_EQ(ask({"location", "-33.8571", "151.2149"}), VerbStatus::done);
    EXPECT_EQ(place(), "-33.857100 151.214900");
    EXPECT_EQ(ask({"location", "+40.7128", "-74.006"}), VerbStatus::done);
    EXPECT_EQ(place(), "40.712800 -74.006000");
    EXPECT_EQ(world.state().settings.Longitude, "-74.006000");
}

TEST_F(SetupVerbs, LocationNoneTakesThePlaceAway) {
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::done);
    EXPECT_EQ(ask({"location", "none"}), VerbStatus::done);
    EXPECT_EQ(place(), "999 999");
}

TEST_F(SetupVerbs, ARefusedLocationIsToldWithItsCoordinateInTheDialogsWordsAndChangesNothing) {
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::done);
    EXPECT_EQ(ask({"location", "91", "0"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Latitude: Input needs to be between 0 and 90.");
    EXPECT_EQ(ask({"location", "1", "-181"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Longitude: Input needs to be between 0 and 180.");
    EXPECT_EQ(ask({"location", "--1", "0"}), VerbStatus::failed) << "one sign is enough";
    EXPECT_EQ(ask({"location", "here", "0"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Latitude: Input must be numeric.");
    EXPECT_EQ(place(), "1.000000 2.000000");
}

TEST_F(SetupVerbs, LocationNeedsTwoWordsOrNone) {
    for (const Words& words : {Words{"location"}, Words{"location", "1"}, Words{"location", "none", "1", "2"}}) {
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
        EXPECT_EQ(complaint(), "usage: nimbryctl [--dir DIR] location LAT LON|none");
    }
}

TEST_F(SetupVerbs, ACopyThatIsFedByAnotherHasThatOnesLocation) {
    world.state().settings.fromnet = true;
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "This copy gets its location from the one that gives it its data");
    EXPECT_EQ(world.state().settings.Latitude, "999");
}

TEST_F(SetupVerbs, UnitsChangesWhatIsNamedAndNothingElse) {
    EXPECT_EQ(ask({"units", "--temp", "F", "--wind", "knots"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(world.setting("Main", "fTempF"), "True");
    EXPECT_EQ(world.setting("Main", "fTempC"), "False");
    EXPECT_EQ(world.setting("Main", "fWindknots"), "True");
    EXPECT_EQ(world.setting("Main", "fWindkph"), "False");
    EXPECT_EQ(world.setting("Main", "fRainmm"), "True");
    EXPECT_TRUE(world.state().records.unitschanged);
}

struct UnitWordCase {
    const char *option, *word, *key;
};

TEST_F(SetupVerbs, EveryUnitHasItsWord) {
    for (const UnitWordCase& c :
         {UnitWordCase{"--temp", "F", "fTempF"}, UnitWordCase{"--temp", "C", "fTempC"},
          UnitWordCase{"--baro", "hPa", "fBarhpa"}, UnitWordCase{"--baro", "inHg", "fBarinhg"},
          UnitWordCase{"--baro", "mB", "fBarmb"}, UnitWordCase{"--rain", "in", "fRainin"},
          UnitWordCase{"--rain", "mm", "fRainmm"}, UnitWordCase{"--wind", "ms", "fWindms"},
          UnitWordCase{"--wind", "mph", "fWindmph"}, UnitWordCase{"--wind", "knots", "fWindknots"},
          UnitWordCase{"--wind", "kph", "fWindkph"}, UnitWordCase{"--newchill", "yes", "newchill"}}) {
        SCOPED_TRACE(c.word);
        EXPECT_EQ(ask({"units", c.option, c.word}), VerbStatus::done);
        EXPECT_EQ(world.setting("Main", c.key), "True");
    }
    EXPECT_EQ(ask({"units", "--newchill", "no", "--rollover", "last"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Main", "newchill"), "False");
    EXPECT_EQ(world.setting("Main", "alRoll"), "905");
}

TEST_F(SetupVerbs, WhatTheUnitsWouldAffectIsToldFirst) {
    world.files.put("nbextreme.log", "a row\r\n");
    EXPECT_EQ(ask({"units", "--temp", "F"}), VerbStatus::failed);
    EXPECT_EQ(complaint(),
              "Changing the units will affect your almanac. You may wish to archive your almanac file (nbextreme.log) "
              "before proceeding (--yes)");
    EXPECT_FALSE(world.state().settings.fTempF);
    EXPECT_EQ(ask({"units", "--temp", "C"}), VerbStatus::done) << "no unit changes";
    EXPECT_EQ(ask({"units", "--temp", "F", "--yes"}), VerbStatus::done);
    EXPECT_TRUE(world.state().settings.fTempF);
}

TEST_F(SetupVerbs, ARefusedRolloverChangesNothing) {
    world.send_trains(2);
    world.files.put("alOct26.csv", "rows");
    EXPECT_EQ(ask({"units", "--rollover", "last", "--temp", "F"}), VerbStatus::failed);
    EXPECT_TRUE(complaint().starts_with("The almanac has been rolled over and archived within the last 24 hours."));
    EXPECT_FALSE(world.state().settings.fTempF);
}

TEST_F(SetupVerbs, WordsThatAreNoUnitsAreNotTaken) {
    for (const Words& words :
         {Words{"units"}, Words{"units", "--yes"}, Words{"units", "--temp"}, Words{"units", "--temp", "K"},
          Words{"units", "--rain", "mb"}, Words{"units", "F"}, Words{"units", "--rollover", "middle"}})
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
}

TEST_F(SetupVerbs, ChangeoverAsksBeforeItThrowsADayAway) {
    EXPECT_EQ(ask({"changeover", "midnight"}), VerbStatus::failed);
    EXPECT_EQ(complaint(),
              "Changing this setting will reset the graphs as well as all accumulated data for Today & Yesterday. It "
              "will also disable email sending and clear email sending times. Click OK to Continue, Cancel to abort "
              "change. (--yes)");
    EXPECT_FALSE(world.state().settings.tmidnight);
    EXPECT_EQ(ask({"changeover", "midnight", "--yes"}), VerbStatus::done);
    EXPECT_TRUE(world.state().settings.tmidnight);
    EXPECT_EQ(ask({"changeover", "midnight"}), VerbStatus::done) << "it is midnight already";
}

TEST_F(SetupVerbs, TenIsNineAndOneHour) {
    EXPECT_EQ(ask({"changeover", "10"}), VerbStatus::done) << "from nine to ten throws nothing away";
    EXPECT_TRUE(complaint().starts_with("Please ensure you understand the implications"));
    EXPECT_TRUE(world.state().settings.AddOneHour);
    EXPECT_EQ(ask({"changeover", "9"}), VerbStatus::done);
    EXPECT_FALSE(world.state().settings.AddOneHour);
    EXPECT_EQ(ask({"changeover", "9"}), VerbStatus::done);
    EXPECT_EQ(complaint(), "");
}

TEST_F(SetupVerbs, ThereAreThreeHoursToEndADay) {
    for (const Words& words : {Words{"changeover"}, Words{"changeover", "11"}, Words{"changeover", "9", "10"},
                               Words{"changeover", "9", "--no"}})
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
}

TEST_F(SetupVerbs, AClientsUnitsAndDaysAreItsServers) {
    world.state().settings.fromnet = true;
    EXPECT_EQ(ask({"units", "--temp", "F"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "This copy gets its units from the one that gives it its data");
    EXPECT_EQ(ask({"changeover", "midnight", "--yes"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "This copy gets its changeover from the one that gives it its data");
}

}  // namespace
}  // namespace nimbry::test
