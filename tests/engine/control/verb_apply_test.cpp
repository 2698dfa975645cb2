#include "engine/control/verb_apply.h"

#include <gmock/gmock.h>

#include "engine/core/main_settings.h"
#include "tests/engine/control/verbs_fixture.h"

namespace nimbry::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Apply : public VerbsTest {
protected:
    void set(const char* section, const char* key, const std::string& value) {
        EXPECT_EQ(ask({"set", section, key, value}), VerbStatus::done) << key;
    }
    /// A value that `set` would refuse, written by hand; it is in force with the next key that is set.
    void write_by_hand(const char* key, const std::string& value) { world.copy().ini.SaveSetting("Main", key, value); }
};

TEST_F(Apply, CommsOpensThePortAndTheSocketsThatWereSet) {
    set("Main", "SerialPort1", "/dev/ttyUSB0");
    EXPECT_EQ(world.line.device(), default_device(1)) << "a key by itself opens nothing";
    set("Main", "bcastnet", "True");
    set("Main", "iplist(1)", "127.0.0.1");
    set("Main", "numofentries", "1");
    EXPECT_EQ(ask({"apply", "comms"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB0");
    EXPECT_EQ(world.datasock.port(), 60137);
}

TEST_F(Apply, CommsMakesAClientOfACopyAndTheOtherWayRound) {
    set("Main", "fromnet", "True");
    EXPECT_EQ(ask({"apply", "comms"}), VerbStatus::done);
    EXPECT_FALSE(world.line.is_open());
    EXPECT_EQ(world.datasock.port(), 60135);
    set("Main", "fromnet", "False");
    EXPECT_EQ(ask({"apply", "comms"}), VerbStatus::done);
    EXPECT_TRUE(world.line.is_open());
    EXPECT_FALSE(world.datasock.is_open());
}

TEST_F(Apply, CommsIsRefusedInTheDialogsWords) {
    set("Main", "bcastnet", "True");
    EXPECT_EQ(ask({"apply", "comms"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "There must be at least one entry in the address list.");
    EXPECT_FALSE(world.datasock.is_open());
}

TEST_F(Apply, CommsNamesAnEntryOfTheListThatIsNoAddress) {
    write_by_hand("iplist(1)", "300.1.1.1");
    set("Main", "numofentries", "1");
    set("Main", "bcastnet", "True");
    EXPECT_EQ(ask({"apply", "comms"}), VerbStatus::failed);
    EXPECT_EQ(complaint(),
              "The IP address appears to be invalid. Use the format nnn.nnn.nnn.nnn In the list: 300.1.1.1");
    EXPECT_FALSE(world.datasock.is_open());
}

TEST_F(Apply, UnitsTurnsWhatIsDisplayedAndMarksTheRecords) {
    set("Main", "fTempF", "True");
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::celsius) << "a key by itself turns nothing";
    EXPECT_EQ(ask({"apply", "units"}), VerbStatus::done);
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_TRUE(world.state().records.unitschanged);
    EXPECT_EQ(world.setting("Main", "fTempC"), "False") << "one unit of a quantity";
}

TEST_F(Apply, UnitsWithoutAChangeTouchesNoRecord) {
    EXPECT_EQ(ask({"apply", "units"}), VerbStatus::done);
    EXPECT_FALSE(world.state().records.unitschanged);
}

TEST_F(Apply, UnitsGivesACaptionToTheChangeoverThatWasSet) {
    set("Main", "tmidnight", "True");
    EXPECT_EQ(ask({"apply", "units"}), VerbStatus::done);
    EXPECT_EQ(world.panel().lblRainT.text, "Since Midnight");
}

TEST_F(Apply, InternetStartsTheScheduleOfTheUploads) {
    for (const auto& [key, value] : {std::pair{"FTPServer", "127.0.0.1"},
                                     {"FTPRemoteFile", "weather.htm"},
                                     {"FTPUser", "home"},
                                     {"FTPPass", "secret"},
                                     {"FTPen", "True"}}) {
        set("FTP", key, value);
    }
    EXPECT_EQ(ask({"apply", "internet"}), VerbStatus::done) << complaint();
    EXPECT_TRUE(world.state().publish.NimbryFTPSetup.ChkEnableFTP);
    world.send_trains(1);
    EXPECT_TRUE(world.copy().timers.running(TimerId::TimerFTP)) << "with the next train";
}

TEST_F(Apply, InternetIsRefusedInTheDialogsWords) {
    set("FTP", "FTPen", "True");
    EXPECT_EQ(ask({"apply", "internet"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "The Remote FTP Server field has not been completed.");
}

TEST_F(Apply, AlarmsWritesTheWholeSection) {
    set("Alarms", "AWindHi", "17");
    EXPECT_EQ(ask({"apply", "alarms"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Alarms", "AWindHi"), "17");
    EXPECT_EQ(world.setting("Alarms", "ATempHi"), "37.8");
    EXPECT_EQ(world.setting("Alarms", "fASound"), "False");
}

TEST_F(Apply, LocationStoresItWithSixDecimalsAndShowsItsSun) {
    set("Main", "Latitude", "-33.8571");
    set("Main", "Longitude", "151.2149");
    EXPECT_EQ(ask({"apply", "location"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Main", "Latitude"), "-33.857100");
    EXPECT_EQ(world.setting("Main", "Longitude"), "151.214900");
    EXPECT_THAT(world.state().additional.TxtSunrise.text, HasSubstr("Sunrise today (05 October 2026)"));
}

TEST_F(Apply, ALocationThatWasNeverEnteredStaysSo) {
    EXPECT_EQ(ask({"apply", "location"}), VerbStatus::done);
    EXPECT_EQ(ask({"get", "Main", "Latitude"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "999\n");
    EXPECT_EQ(world.state().additional.TxtSunrise.text, "Can't calculate Sunrise as no location entered");
}

TEST_F(Apply, ALocationThatIsNoneIsRefusedInTheDialogsWordsAndStaysAsItIs) {
    write_by_hand("Latitude", "95");
    set("Main", "Longitude", "7");
    EXPECT_EQ(ask({"apply", "location"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Input needs to be between 0 and 90.");
    write_by_hand("Latitude", "north");
    set("Main", "Longitude", "7.0");
    EXPECT_EQ(ask({"apply", "location"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Input must be numeric.");
    EXPECT_EQ(world.setting("Main", "Latitude"), "north");
    EXPECT_EQ(world.setting("Main", "Longitude"), "7.0");
}

TEST_F(Apply, MarqueeWritesItsElevenKeys) {
    set("Marquee", "DisDew", "True");
    EXPECT_TRUE(world.state().big.FrmMarquee.chkDew) << "in force at once";
    EXPECT_EQ(ask({"apply", "marquee"}), VerbStatus::done);
    EXPECT_EQ(world.setting("Marquee", "DisDew"), "True");
    for (const char* off : {"DisHI", "DisChill", "DisRain", "DisRainTot", "DisInTemp", "DisInHum", "DisRainLH",
                            "DisSunrise", "DisSunset", "DisWindGLH"})
        EXPECT_EQ(world.setting("Marquee", off), "False") << off;
}

TEST_F(Apply, WithoutANameAllOfThem) {
    set("Main", "fTempF", "True");
    set("Main", "SerialPort1", "/dev/ttyUSB0");
    EXPECT_EQ(ask({"apply"}), VerbStatus::done);
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB0");
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_EQ(world.setting("Alarms", "ATempHi"), "37.8");
    EXPECT_EQ(world.setting("Marquee", "DisHI"), "False");
    EXPECT_EQ(world.state().settings.Latitude, "999");
}

TEST_F(Apply, OfAllThemARefusedOneKeepsNoOtherBack) {
    set("Main", "bcastnet", "True");
    write_by_hand("Latitude", "95");
    set("Main", "Longitude", "0");
    set("Main", "fTempF", "True");
    EXPECT_EQ(ask({"apply"}), VerbStatus::failed);
    EXPECT_THAT(asker.complaints, ElementsAre("There must be at least one entry in the address list.",
                                              "Input needs to be between 0 and 90."));
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit);
}

TEST_F(Apply, AClientHasItsUnitsAndItsPlaceFromItsServer) {
    set("Main", "fromnet", "True");
    EXPECT_EQ(ask({"apply", "units"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "This copy gets its units from the one that gives it its data");
    EXPECT_EQ(ask({"apply", "location"}), VerbStatus::failed);
    EXPECT_EQ(ask({"apply"}), VerbStatus::done) << "of all dialogs the others are meant";
}

TEST_F(Apply, KnowsItsDialogs) {
    for (const Words& words : {Words{"apply", "Comms"}, Words{"apply", "comms", "units"}, Words{"apply", ""}})
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
}

}  // namespace
}  // namespace nimbry::test
