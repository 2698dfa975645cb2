#include "engine/alarms/alarms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/control/verbs.h"
#include "tests/engine/control/recording_asker.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// A copy with these lines in section `Alarms`, whose first train has gone by.
struct AlarmWorld : World {
    explicit AlarmWorld(const std::string& lines) {
        files.put("Nimbry.ini", main_section() + "[Alarms]\r\n" + lines);
        start();
        send_train();
    }
    /// A train of a pressure below the low threshold that most tests set.
    void breach() {
        StationReadings station;
        station.barometer.hpa = 990;
        send_train(station);
    }
    [[nodiscard]] bool in_alarm() { return panel().Text2[4].back == colours::alarm_back; }
};

const std::string low_pressure = "fABarLo=True\r\n";

// What an alarm has done is undone 27 seconds later

TEST(TimAlarm, GivesTheColourBackAfterTwentySevenSecondsOnce) {
    AlarmWorld world(low_pressure);
    const Instant begin = world.clock.monotonic();
    world.breach();
    EXPECT_TRUE(world.in_alarm());
    EXPECT_FALSE(world.state().menu.mnuHide.enabled);
    // A train of 141 bytes that comes all at once is decoded 60 ms later.
    world.run_for(begin + 27059ms - world.clock.monotonic());
    EXPECT_TRUE(world.in_alarm());
    world.run_for(1ms);
    EXPECT_FALSE(world.in_alarm());
    EXPECT_EQ(world.panel().Text2[4].back, 0x80FF80u);
    EXPECT_TRUE(world.state().menu.mnuHide.enabled);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimAlarm)) << "it fires once";
}

TEST(TimAlarm, IsNotRestartedByTheNextAlarm) {
    AlarmWorld world(low_pressure + "fASound=True\r\n");
    world.breach();
    world.run_for(9900ms);
    world.breach();
    world.run_for(9900ms);
    world.breach();
    EXPECT_EQ(world.sounds.played.size(), 3u) << "each alarm sounds";
    world.run_for(7s);  // 27 seconds from the first
    EXPECT_FALSE(world.in_alarm());
    EXPECT_EQ(world.sounds.played.size(), 4u);
    world.breach();
    EXPECT_TRUE(world.in_alarm()) << "still in breach: red again with the next decoding";
    EXPECT_TRUE(world.copy().timers.running(TimerId::TimAlarm));
}

TEST(TimAlarm, GivesEachDisplayItsOwnColour) {
    AlarmWorld world("");
    MainPanel& panel = world.panel();
    for (std::size_t n : {0u, 1u, 2u, 4u, 5u, 6u, 8u}) panel.Text2[n].back = colours::alarm_back;
    panel.TxtRainToday.back = colours::alarm_back;
    end_alarm(world.copy());
    for (std::size_t n : {0u, 1u, 2u, 4u, 6u, 8u}) EXPECT_EQ(panel.Text2[n].back, 0x80FF80u) << n;
    EXPECT_EQ(panel.TxtPeakRain().back, 0xFF80FFu);
    EXPECT_EQ(panel.TxtRainToday.back, 0xFF80FFu);
}

TEST(TimAlarm, LeavesADisplayThatIsNotInTheAlarmsColour) {
    AlarmWorld world("");
    world.panel().Text2[4].back = 0x123456;
    world.panel().TxtRainToday.back = 0x123456;
    end_alarm(world.copy());
    EXPECT_EQ(world.panel().Text2[4].back, 0x123456u);
    EXPECT_EQ(world.panel().TxtRainToday.back, 0x123456u);
}

TEST(TimAlarm, SoundsAgainUnlessItHasBeenSilenced) {
    AlarmWorld world(low_pressure + "fASound=True\r\n");
    world.breach();
    world.run_for(30s);
    EXPECT_EQ(world.sounds.played, (std::vector<std::string>{"Nimbry.WAV", "Nimbry.WAV"}));
    world.breach();
    EXPECT_EQ(world.sounds.played.size(), 3u);
    world.state().alarms.frmAlarms.chkASound = false;
    world.run_for(30s);
    EXPECT_EQ(world.sounds.played.size(), 3u) << "silenced while it stood";
    EXPECT_FALSE(world.in_alarm());
}

// Settings

TEST(GetAlarms, TakesTheSectionIntoForceAtTheStart) {
    AlarmWorld world("ABarLo=1020\r\nfABarLo=True\r\n");
    EXPECT_EQ(world.state().alarms.frmAlarms.ABarLo, 1020);
    world.send_train();
    EXPECT_EQ(world.state().alarms.AlarmReason, "the barometric pressure is below the alarm threshold");
}

TEST(GetAlarms, WritesNothing) {
    AlarmWorld world("ATempHi=30,5\r\n");
    EXPECT_EQ(world.setting("Alarms", "ATempHi"), "30,5");
    EXPECT_EQ(world.setting("Alarms", "ATempLo"), "");
}

TEST(GetAlarms, FollowsAKeyThatIsSetFromOutside) {
    AlarmWorld world("");
    RecordingAsker asker;
    EXPECT_EQ(answer_request(world.copy(), {"set", "Alarms", "fAWindHi", "True"}, asker), VerbStatus::done);
    EXPECT_EQ(answer_request(world.copy(), {"set", "Alarms", "AWindHi", "4,1"}, asker), VerbStatus::done);
    world.send_train();
    EXPECT_EQ(world.state().alarms.AlarmReason, "the wind speed is above the alarm threshold");
}

TEST(AcceptAlarms, ClicksTakesTheValuesAndWritesEveryKey) {
    AlarmWorld world("");
    AlarmsDialog values;
    values.ATempHi = 30.5F;
    values.ADewLo = -40;
    values.chkAWindHi = true;
    values.chkAlarmMail = true;
    accept_alarms(world.copy(), values);
    EXPECT_EQ(world.sounds.played, std::vector<std::string>{"click.WAV"});
    EXPECT_EQ(world.state().alarms.frmAlarms, values);
    struct Key {
        const char *name, *value;
    };
    for (const Key& key :
         {Key{"ATempHi", "30.5"},     Key{"ATempLo", "1"},        Key{"AHumHi", "95"},        Key{"AHumLo", "20"},
          Key{"ABarHi", "1030"},      Key{"ABarLo", "995"},       Key{"AWindHi", "0"},        Key{"ARainHi", "50"},
          Key{"ARainAm", "25"},       Key{"ADewHi", "25"},        Key{"ADewLo", "-40"},       Key{"AItempHi", "37.8"},
          Key{"AItempLo", "10"},      Key{"fAOuTempHi", "False"}, Key{"fAOuTempLo", "False"}, Key{"fAOuHumHi", "False"},
          Key{"fAOuHumLo", "False"},  Key{"fABarHi", "False"},    Key{"fABarLo", "False"},    Key{"fAWindHi", "True"},
          Key{"fARainHi", "False"},   Key{"fARainAm", "False"},   Key{"fADewHi", "False"},    Key{"fADewLo", "False"},
          Key{"fAInTempHi", "False"}, Key{"fAInTempLo", "False"}, Key{"fADewCu", "False"},    Key{"fASound", "False"},
          Key{"fAMail", "True"}}) {
        EXPECT_EQ(world.setting("Alarms", key.name), key.value) << key.name;
    }
    world.send_train();
    EXPECT_EQ(world.state().alarms.AlarmReason, "the wind speed is above the alarm threshold") << "in force at once";
}

TEST(AcceptAlarms, HoldsInMemoryWhenTheFileCannotBeWritten) {
    AlarmWorld world("");
    world.files.refuse_changes(FileResult::permission);
    AlarmsDialog values;
    values.chkAWindHi = true;
    accept_alarms(world.copy(), values);
    EXPECT_TRUE(world.state().alarms.frmAlarms.chkAWindHi);
    EXPECT_EQ(world.setting("Alarms", "fAWindHi"), "");
}

// The mail

class AlarmMails : public testing::Test {
protected:
    /// Sends trains up to the given one; those for which `breach` says so bear a low pressure. Returns the numbers of
    /// the trains with which a mail went out.
    template <class Breach>
    std::vector<int> mails_until(int last, Breach breach) {
        std::vector<int> mails;
        for (; train <= last; ++train) {
            const bool before = alarms().AlarmMailSent;
            breach(train) ? world.breach() : world.send_train();
            world.run_for(9900ms);
            if (alarms().AlarmMailSent && !before) mails.push_back(train);
        }
        return mails;
    }
    AlarmState& alarms() { return world.state().alarms; }

    AlarmWorld world{low_pressure + "fAMail=True\r\n"};
    int train = 2;
};

constexpr auto always = [](int) { return true; };

TEST_F(AlarmMails, GoOutOnceInTwoHundredAndTenCycles) {
    // The save of cycle 210 allows the next, but has just forgotten the alarm: it goes with cycle 211.
    EXPECT_EQ(mails_until(425, always), (std::vector<int>{2, 211, 421}));
}

TEST_F(AlarmMails, MayFollowSoonerWhereTheFirstWasLateInItsPeriod) {
    EXPECT_EQ(mails_until(215, [](int n) { return n >= 200; }), (std::vector<int>{200, 211}));
}

TEST_F(AlarmMails, AreForgottenInTheCycleOfASave) {
    EXPECT_EQ(mails_until(40, [](int n) { return n == 30; }), std::vector<int>{});
    EXPECT_EQ(alarms().AlarmReason, "");
    EXPECT_FALSE(alarms().AlarmCondition);
}

TEST_F(AlarmMails, GoWithTheNextTrainWhereTheAlarmLasts) {
    EXPECT_EQ(mails_until(40, [](int n) { return n >= 30; }), std::vector<int>{31});
}

TEST_F(AlarmMails, WaitForTheCycleInWhichNoMailIsUnderWay) {
    world.state().publish.emailbusy.set();
    EXPECT_EQ(mails_until(4, always), std::vector<int>{});
    world.state().publish.emailbusy.clear();
    EXPECT_EQ(mails_until(6, always), std::vector<int>{5});
}

TEST_F(AlarmMails, AreOffWithTheirSwitch) {
    alarms().frmAlarms.chkAlarmMail = false;
    EXPECT_EQ(mails_until(5, always), std::vector<int>{});
}

TEST_F(AlarmMails, TellWhatTheLastAlarmWas) {
    alarms().frmAlarms.chkAOuHumLo = true;
    alarms().frmAlarms.AHumLo = 60;
    EXPECT_EQ(mails_until(2, always), std::vector<int>{2});
    EXPECT_EQ(alarms().AlarmReason, "the barometric pressure is below the alarm threshold");
}

TEST_F(AlarmMails, AreComposedInTheCycleOfTheirAlarm) {
    world.files.put("mail_alm_template.txt", "~~WEBMLTITLE~~It is ~~WEBBAROMTR~~.");
    InternetDialog& settings = world.state().publish.NimbryFTPSetup;
    settings.MailServer = "mail.home.net";
    settings.MailTo = settings.MailMyAddr = "me@home.net";
    EXPECT_EQ(mails_until(2, always), std::vector<int>{2});
    ASSERT_EQ(world.transfers.mails.size(), 1U);
    EXPECT_EQ(
        world.transfers.mails[0].body,
        "Automatic ALARM email from Nimbry 2.02\r\nThis email was sent because the barometric pressure is below the "
        "alarm threshold\r\n" +
            std::string(52, '*') + "\r\n\r\nIt is 990 mB.");
}

TEST(AlarmSentenceOfACycle, AndItsGustEndWithASave) {
    AlarmWorld world("fAWindHi=True\r\nAWindHi=4\r\n");
    StationReadings calm;
    calm.wind.gust_ms = 1;
    world.send_train();  // 4.2 m/s
    world.run_for(9900ms);
    world.send_trains(27, calm);
    EXPECT_EQ(world.state().alarms.AlarmReason, "the wind speed is above the alarm threshold");
    ASSERT_TRUE(world.state().alarms.gust);
    EXPECT_EQ(world.state().alarms.gust->text, "15.1 km/h");  // 4.2 * 3.6 = 15.12
    world.send_train(calm);                                   // the 30th
    EXPECT_EQ(world.state().alarms.AlarmReason, "");
    EXPECT_FALSE(world.state().alarms.gust);
    EXPECT_FALSE(world.state().alarms.AlarmCondition);
}

}  // namespace
}  // namespace nimbry::test
