#include "engine/setup/changeover_choice.h"

#include <gtest/gtest.h>

#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using std::chrono::seconds;

constexpr const char* midnight_text =
    "Changing this setting will reset the graphs as well as all accumulated data for Today & Yesterday.\r\n"
    "It will also disable email sending and clear email sending times.\r\n"
    "Click OK to Continue, Cancel to abort change.";
constexpr const char* nine_text =
    "Changing this setting will reset the accumulated data for Today & Yesterday\r\n"
    "as well as disabling email sending and clearing email sending times.\r\n"
    "Click OK to Continue, Cancel to abort change.";

/// A copy whose day ends at 9.00am, with weather, records of both days, graphs and a mail schedule.
struct ChangeoverChoice : testing::Test {
    StartedWorld world;
    WeatherState& state = world.state();

    ChangeoverChoice() {
        StationReadings readings;
        readings.rain.total_mm = 40;
        world.send_trains(3, readings);
        readings.rain.total_mm = 42;
        world.send_trains(2, readings);
        world.files.put("nimbrYDay.log", "a day");
        world.files.put("grafdata.dat", "a day of samples");
        world.copy().ini.SaveSetting("FTP", "EMailEn", "True");
        world.copy().ini.SaveSetting("FTP", "numofentries", "2");
        state.publish.NimbryFTPSetup.ChkSendMail = true;
        state.publish.NimbryFTPSetup.MailList = {"07:00"};
    }
    bool choose(bool midnight) {
        bool changed = false;
        world.act([&] { changed = choose_changeover(world.copy(), midnight); });
        world.run_for(seconds{1});
        return changed;
    }
    std::string key(const char* section, const char* name) { return world.setting(section, name); }
};

TEST_F(ChangeoverChoice, ItAsksWithOkAndCancel) {
    EXPECT_FALSE(choose(true));
    ASSERT_EQ(world.notices.boxes.size(), 1U);
    const MessageBox& asked = world.notices.boxes[0].what;
    EXPECT_EQ(asked.title, "Nimbry");
    EXPECT_EQ(asked.text, midnight_text);
    EXPECT_EQ(asked.choices, Choices::ok_cancel);
}

TEST_F(ChangeoverChoice, YesterdaysFileThatCannotBeDeletedIsToldInTheLog) {
    world.files.refuse("nimbrYDay.log", FileResult::permission);
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    ASSERT_FALSE(world.log().empty());
    EXPECT_TRUE(
        world.log().back().ends_with(" nimbrYDay.log could not be deleted: yesterday comes back with the next start"))
        << world.log().back();
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
    EXPECT_TRUE(state.settings.tmidnight) << "the rest of the change is done";
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
}

TEST_F(ChangeoverChoice, YesterdaysFileThatIsNotThereIsNothingToTell) {
    world.files.take_away("nimbrYDay.log");
    world.notices.will_answer(Answer::ok);
    const auto before = world.log();
    EXPECT_TRUE(choose(true));
    EXPECT_EQ(world.log(), before);
}

TEST_F(ChangeoverChoice, CancelLeavesEverythingAsItWas) {
    const auto record = state.records.day.maxtemp;
    world.notices.will_answer(Answer::cancel);
    EXPECT_FALSE(choose(true));
    EXPECT_TRUE(state.settings.tnineam);
    EXPECT_EQ(state.records.day.maxtemp, record);
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(key("FTP", "EMailEn"), "True");
}

TEST_F(ChangeoverChoice, TheHourInForceIsNotAskedForAgain) {
    EXPECT_FALSE(choose(false));
    EXPECT_TRUE(world.notices.boxes.empty());
}

TEST_F(ChangeoverChoice, MidnightBeginsTheDayAnew) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_TRUE(state.settings.tmidnight);
    EXPECT_FALSE(state.settings.tnineam);
    EXPECT_EQ(key("Main", "tmidnight"), "True") << "written at once: what is deleted is gone at once";
    EXPECT_EQ(key("Main", "tnineam"), "False");

    EXPECT_EQ(state.records.day.maxtemp, -999);
    EXPECT_EQ(state.panel.TxtTempMax.text, "");
    EXPECT_EQ(state.additional.txtMaxHI.text, "- No Valid Data -");
    EXPECT_EQ(state.panel.TxtYTempMax.text, "- No data available yet -");
    EXPECT_EQ(state.additional.txtYMinInTemp.text, "- No data available yet -");
    EXPECT_EQ(state.panel.TxtRainYest.text, " -- ");
    EXPECT_FALSE(world.files.exists("nimbrYDay.log"));
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
}

TEST_F(ChangeoverChoice, MailIsOffAndItsTimesAreGone) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_FALSE(state.publish.NimbryFTPSetup.ChkSendMail);
    EXPECT_TRUE(state.publish.NimbryFTPSetup.MailList.empty());
    EXPECT_EQ(key("FTP", "EMailEn"), "False");
    EXPECT_EQ(key("FTP", "numofentries"), "0");
}

TEST_F(ChangeoverChoice, TheCaptionsFollowAndNineAsksInItsOwnWords) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_EQ(state.panel.lblRainT.text, "Since Midnight");
    EXPECT_EQ(state.panel.lblRainY.text, "24 Hours prior to Midnight");
    EXPECT_EQ(state.panel.lblRainT.tip, "Rainfall so far today since Midnight");
    EXPECT_EQ(state.panel.lblRainY.tip, "Rainfall for the 24 hours prior to Midnight");
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(false));
    EXPECT_EQ(world.notices.boxes[1].what.text, nine_text);
    EXPECT_EQ(state.panel.lblRainT.text, "Since 9:00 am");
    EXPECT_EQ(state.panel.lblRainY.tip, "Rainfall for the 24 hours prior to 9:00 am");
}

TEST_F(ChangeoverChoice, NineBeginsTheDayAnewAsMidnightDoes) {
    world.act([&] { change_changeover(world.copy(), true); });
    StationReadings readings;
    readings.rain.total_mm = 42;
    world.send_trains(2, readings);
    ASSERT_NE(state.records.day.maxtemp, -999);
    world.files.put("nimbrYDay.log", "a day");
    world.files.put("grafdata.dat", "a day of samples");
    world.copy().ini.SaveSetting("FTP", "EMailEn", "True");
    state.publish.NimbryFTPSetup.ChkSendMail = true;
    state.publish.NimbryFTPSetup.MailList = {"07:00"};

    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(false));
    EXPECT_EQ(key("Main", "tmidnight"), "False");
    EXPECT_EQ(key("Main", "tnineam"), "True");
    EXPECT_EQ(state.records.day.maxtemp, -999);
    EXPECT_EQ(state.panel.TxtTempMax.text, "");
    EXPECT_EQ(state.panel.TxtYTempMax.text, "- No data available yet -");
    EXPECT_FALSE(world.files.exists("nimbrYDay.log"));
    EXPECT_FALSE(world.files.exists("grafdata.dat")) << "although its question does not speak of the graphs";
    EXPECT_FALSE(state.publish.NimbryFTPSetup.ChkSendMail);
    EXPECT_TRUE(state.publish.NimbryFTPSetup.MailList.empty());
    EXPECT_EQ(key("FTP", "EMailEn"), "False");
}

TEST_F(ChangeoverChoice, TheRainOfTheNewDayCountsFromNow) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_EQ(state.rain.raintoday, 0);
    StationReadings readings;
    readings.rain.total_mm = 45;
    world.send_trains(1, readings);
    EXPECT_EQ(state.rain.raintoday, 3) << "the counter stood at 42";
    EXPECT_EQ(state.panel.TxtRainToday.text, " 3 mm");
}

TEST_F(ChangeoverChoice, OneHourLaterActsAtOnceAndTouchesNoRecord) {
    const DayExtremes before = state.records.day;
    set_one_hour(world.copy(), true);
    EXPECT_TRUE(state.settings.AddOneHour);
    EXPECT_EQ(key("Main", "AddOneHour"), "True");
    EXPECT_EQ(state.panel.lblRainT.text, "Since 10:00 am");
    EXPECT_EQ(state.panel.lblRainY.text, "24 Hours prior to 10:00 am");
    EXPECT_EQ(state.records.day.maxtemp, before.maxtemp);
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
    set_one_hour(world.copy(), false);
    EXPECT_EQ(key("Main", "AddOneHour"), "False");
    EXPECT_EQ(state.panel.lblRainT.text, "Since 9:00 am");
}

TEST_F(ChangeoverChoice, WithMidnightTheHourChangesItsKeyAlone) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    set_one_hour(world.copy(), true);
    EXPECT_EQ(state.panel.lblRainT.text, "Since Midnight");
    EXPECT_EQ(key("Main", "AddOneHour"), "True");
}

TEST(OneHourWarning, IsWordedAsEver) {
    EXPECT_EQ(one_hour_warning().title, "Nimbry");
    EXPECT_EQ(one_hour_warning().text,
              "Please ensure you understand the implications of changing this setting!.\r\n"
              "You should consult the Nimbry help file for details of the correct sequence to\r\n"
              "to follow when altering this setting in conjunction with changes to daylight saving.");
}

TEST_F(ChangeoverChoice, ADiskThatTakesNothingDoesNotKeepTheDayFromMoving) {
    world.files.refuse_changes(FileResult::permission);
    world.act([&] { change_changeover(world.copy(), true); });
    world.run_for(seconds{1});
    EXPECT_TRUE(state.settings.tmidnight) << "in force all the same";
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
}

}  // namespace
}  // namespace nimbry::test
