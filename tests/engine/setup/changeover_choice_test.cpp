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

TEST_F(ChangeoverChoice, it_asks_with_ok_and_cancel) {
    EXPECT_FALSE(choose(true));
    ASSERT_EQ(world.notices.boxes.size(), 1U);
    const MessageBox& asked = world.notices.boxes[0].what;
    EXPECT_EQ(asked.title, "Nimbry");
    EXPECT_EQ(asked.text, midnight_text);
    EXPECT_EQ(asked.choices, Choices::ok_cancel);
}

TEST_F(ChangeoverChoice, yesterdays_file_that_cannot_be_deleted_is_told_in_the_log) {
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

TEST_F(ChangeoverChoice, yesterdays_file_that_is_not_there_is_nothing_to_tell) {
    world.files.take_away("nimbrYDay.log");
    world.notices.will_answer(Answer::ok);
    const auto before = world.log();
    EXPECT_TRUE(choose(true));
    EXPECT_EQ(world.log(), before);
}

TEST_F(ChangeoverChoice, cancel_leaves_everything_as_it_was) {
    const auto record = state.records.day.maxtemp;
    world.notices.will_answer(Answer::cancel);
    EXPECT_FALSE(choose(true));
    EXPECT_TRUE(state.settings.tnineam);
    EXPECT_EQ(state.records.day.maxtemp, record);
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(key("FTP", "EMailEn"), "True");
}

TEST_F(ChangeoverChoice, the_hour_in_force_is_not_asked_for_again) {
    EXPECT_FALSE(choose(false));
    EXPECT_TRUE(world.notices.boxes.empty());
}

TEST_F(ChangeoverChoice, midnight_begins_the_day_anew) {
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

TEST_F(ChangeoverChoice, mail_is_off_and_its_times_are_gone) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_FALSE(state.publish.NimbryFTPSetup.ChkSendMail);
    EXPECT_TRUE(state.publish.NimbryFTPSetup.MailList.empty());
    EXPECT_EQ(key("FTP", "EMailEn"), "False");
    EXPECT_EQ(key("FTP", "numofentries"), "0");
}

TEST_F(ChangeoverChoice, the_captions_follow_and_nine_asks_in_its_own_words) {
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

TEST_F(ChangeoverChoice, nine_begins_the_day_anew_as_midnight_does) {
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

TEST_F(ChangeoverChoice, the_rain_of_the_new_day_counts_from_now) {
    world.notices.will_answer(Answer::ok);
    EXPECT_TRUE(choose(true));
    EXPECT_EQ(state.rain.raintoday, 0);
    StationReadings readings;
    readings.rain.total_mm = 45;
    world.send_trains(1, readings);
    EXPECT_EQ(state.rain.raintoday, 3) << "the counter stood at 42";
    EXPECT_EQ(state.panel.TxtRainToday.text, " 3 mm");
}

TEST_F(ChangeoverChoice, one_hour_later_acts_at_once_and_touches_no_record) {
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

TEST_F(ChangeoverChoice, with_midnight_the_hour_changes_its_key_alone) {
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

TEST_F(ChangeoverChoice, a_disk_that_takes_nothing_does_not_keep_the_day_from_moving) {
    world.files.refuse_changes(FileResult::permission);
    world.act([&] { change_changeover(world.copy(), true); });
    world.run_for(seconds{1});
    EXPECT_TRUE(state.settings.tmidnight) << "in force all the same";
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
}

}  // namespace
}  // namespace nimbry::test
