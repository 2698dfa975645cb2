#include "engine/publish/mail.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>

#include "engine/publish/mail_body.h"
#include "engine/records/extremes.h"
#include "tests/engine/publish/mails.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

TEST_F(Mails, WithoutAServerOrAnAddressSayWhatIsMissing) {
    settings.ChkSendMail = false;  // a forced mail goes all the same
    for (const auto& [field, name] : {std::pair{&InternetDialog::MailServer, "Mail Server"},
                                      {&InternetDialog::MailTo, "Mail To"},
                                      {&InternetDialog::MailMyAddr, "Your email address"}}) {
        const std::string kept = std::exchange(settings.*field, " ");
        uploadmail(world.copy);
        const std::string missing = "The " + std::string(name) + " field has not been completed.";
        EXPECT_EQ(publish.last_mail.result, missing);
        EXPECT_TRUE(logged(" Email send failed: " + missing));
        EXPECT_EQ(world.notices.balloons.back().what.text, "Nimbry was unable to send Email\r\n" + missing);
        settings.*field = kept;
    }
    EXPECT_TRUE(sent().empty());
    EXPECT_FALSE(publish.emailbusy);
}

TEST_F(Mails, GoToTheServerOfTheSettingsFromTheProgramsName) {
    settings.Mailcc = "c@home.net";
    settings.MailBcc = "d@home.net;e@home.net";
    settings.MailPass = "of nobody";  // without a user there is no login
    uploadmail(world.copy);
    ASSERT_EQ(sent().size(), 1U);
    const Mail& mail = sent()[0];
    EXPECT_EQ(mail.server, "mail.home.net");
    EXPECT_EQ(mail.port, 25);
    EXPECT_EQ(mail.encryption, Encryption::none);
    EXPECT_EQ(mail.user, "");
    EXPECT_EQ(mail.password, "");
    EXPECT_EQ(mail.from_name, "Nimbry_Automatic_Weather_Email");
    EXPECT_EQ(mail.from, "me@home.net");
    EXPECT_EQ(mail.to, (Names{"a@home.net", "b@work.org"}));
    EXPECT_EQ(mail.cc, Names{"c@home.net"});
    EXPECT_EQ(mail.bcc, (Names{"d@home.net", "e@home.net"}));
    EXPECT_EQ(mail.subject, "Weather Data 14:05:07 21 Oct 2026");
    EXPECT_EQ(mail.body, "It is +8.1 \260C");
    EXPECT_EQ(mail.limit, 120s);
    EXPECT_TRUE(mail.attachments.empty());
    EXPECT_EQ(world.log_lines().back(), "21 Oct 2026 14:05:07 Email send success");
    EXPECT_TRUE(world.notices.balloons.empty()) << "success is shown for a forced mail only";
    EXPECT_EQ(publish.last_mail.result, "ok");
    EXPECT_EQ(publish.last_mail.end, october_afternoon);
}

TEST_F(Mails, NobodyIsMeantByTheWordNull) {
    settings.Mailcc = "Null";
    settings.MailBcc = " NULL ";
    uploadmail(world.copy);
    EXPECT_TRUE(sent().at(0).cc.empty());
    EXPECT_TRUE(sent().at(0).bcc.empty());
}

TEST_F(Mails, TakeOtherPortsEncryptionAndALoginByTheOptionalKeys) {
    settings.MailPort = "587";
    settings.MailSecurity = "STARTTLS";
    settings.MailUser = "me";
    settings.MailPass = "secret";
    uploadmail(world.copy);
    settings.MailSecurity = "tls";
    settings.MailPort = "99999";
    uploadmail(world.copy);
    ASSERT_EQ(sent().size(), 2U);
    EXPECT_EQ(sent()[0].port, 587);
    EXPECT_EQ(sent()[0].encryption, Encryption::explicit_tls);
    EXPECT_EQ(sent()[0].user, "me");
    EXPECT_EQ(sent()[0].password, "secret");
    EXPECT_EQ(sent()[1].encryption, Encryption::implicit_tls);
    EXPECT_EQ(sent()[1].port, 25) << "no such port";
}

TEST_F(Mails, CarryTheFilesThatAreThereAndLogTheOthers) {
    settings.MailAttach = "nimbryraw.txt; /pics/VidCap.jpg ;;gone.txt";
    world.files.put("nimbryraw.txt", "x");
    world.files.add_folder("/pics");
    world.files.put("/pics/VidCap.jpg", "y");
    world.state.menu.mnulogMail.checked = false;
    uploadmail(world.copy);
    const auto& attached = sent().at(0).attachments;
    ASSERT_EQ(attached.size(), 2U);
    EXPECT_EQ(attached[0].name, "nimbryraw.txt");
    EXPECT_EQ(attached[0].path, world.files.path("nimbryraw.txt"));
    EXPECT_EQ(attached[1].name, "VidCap.jpg");
    EXPECT_EQ(attached[1].path, "/pics/VidCap.jpg");
    EXPECT_EQ(world.log_lines().back(), "21 Oct 2026 14:05:07 Email attachment not found: gone.txt");
}

TEST_F(Mails, ThatFailAreToldOnceAndNotSentAgain) {
    fails_with("550 User unknown");
    uploadmail(world.copy);
    ASSERT_EQ(balloon_titles(), Names{"Email Error"});
    EXPECT_EQ(world.notices.balloons[0].what.text, "Nimbry was unable to send Email\r\n550 User unknown");
    EXPECT_EQ(world.log_lines().back(), "21 Oct 2026 14:05:07 Email send failed: 550 User unknown");
    EXPECT_EQ(publish.last_mail.result, "550 User unknown");
    EXPECT_FALSE(publish.emailbusy);
    world.pauses.pause(10min);
    EXPECT_EQ(sent().size(), 1U);
}

TEST_F(Mails, FailSilentlyWhereTheSwitchesSaySo) {
    world.state.menu.mnuNoMailPop.checked = true;
    world.state.menu.mnulogMail.checked = false;
    const std::size_t lines = world.log_lines().size();
    fails_with("Timed out");
    uploadmail(world.copy);
    EXPECT_TRUE(world.notices.balloons.empty());
    EXPECT_EQ(world.log_lines().size(), lines);
}

TEST_F(Mails, WithoutALineAreToldAndLoggedWhateverTheSwitchesSay) {
    world.transfers.online = false;
    world.state.menu.mnuNoMailPop.checked = true;
    world.state.menu.mnulogMail.checked = false;
    uploadmail(world.copy);
    EXPECT_TRUE(sent().empty());
    ASSERT_EQ(balloon_titles(), Names{"Email Error"});
    EXPECT_EQ(world.notices.balloons[0].what.text, "Nimbry was unable to send Email!");
    EXPECT_EQ(world.log_lines().back(), "21 Oct 2026 14:05:07 Email send failed: Unable to connect to Internet");
    EXPECT_EQ(world.transfers.reachability_asked.front(), "mail.home.net");
    EXPECT_FALSE(publish.emailbusy);
    EXPECT_EQ(publish.last_mail.result, "Unable to connect to Internet");
}

TEST_F(Mails, WithoutALineAreNotMadeAndOneThatWaitedIsDropped) {
    world.transfers.online = false;
    world.state.reports.new_data = true;
    uploadmail(world.copy);
    EXPECT_TRUE(world.state.reports.new_data) << "whoever makes a text has used the data";
    genAlarmMail(world.copy);
    uploadmail(world.copy);
    EXPECT_FALSE(publish.pending_mail);
    world.transfers.online = true;
    uploadmail(world.copy);
    EXPECT_EQ(sent().at(0).body, "It is +8.1 \260C");
}

TEST_F(Mails, LeaveTheLineWhetherTheyWentOrNot) {
    settings.ChkHangup = true;
    for (const char* fault : {"", "550 User unknown"}) {
        publish.ProgramDialled = true;
        fails_with(fault);
        uploadmail(world.copy);
        EXPECT_FALSE(publish.ProgramDialled) << fault;
    }
    EXPECT_EQ(world.desktop.hang_ups, 2);
}

TEST_F(Mails, HoldTheirFlagAndLockTheOpenSetupWindowsUntilTheServerHasAnswered) {
    world.state.setup.Units.open = true;
    world.transfers.mail_steps.push_back({.after = 30s});
    world.pauses.start([&] { uploadmail(world.copy); });
    world.pauses.pause(20s);
    EXPECT_TRUE(publish.emailbusy);
    EXPECT_FALSE(world.state.setup.Units.enabled);
    EXPECT_EQ(world.state.setup.Units.caption, "Temporarily Locked");
    EXPECT_TRUE(world.state.setup.FTP.enabled) << "it is not open";
    extremes(world.copy);
    EXPECT_FALSE(world.state.setup.Units.enabled) << "a cycle gives it back only once the mail has gone";
    world.pauses.pause(11s);
    EXPECT_FALSE(publish.emailbusy);
    EXPECT_TRUE(world.state.setup.Units.enabled);
    EXPECT_EQ(world.state.setup.Units.caption, "Nimbry Units Setup");
}

TEST_F(Mails, LeaveTheWindowsLockedToAChangeoverOfTheMeantime) {
    world.state.setup.Units.open = true;
    world.transfers.mail_steps.push_back({.after = 30s});
    world.pauses.start([&] { uploadmail(world.copy); });
    world.state.comm.changebusy.set();
    world.pauses.pause(31s);
    EXPECT_FALSE(publish.emailbusy);
    EXPECT_FALSE(world.state.setup.Units.enabled);
}

TEST_F(Mails, NeitherAClientNorAProgramThatClosesNorASecondOneSends) {
    world.state.settings.fromnet = true;
    uploadmail(world.copy);
    world.state.settings.fromnet = false;
    world.state.run.ProgramClosing = true;
    uploadmail(world.copy);
    world.state.run.ProgramClosing = false;
    {
        const auto busy = publish.emailbusy.try_hold();
        uploadmail(world.copy);
        send_alarm_mail(world.copy);
    }
    EXPECT_TRUE(sent().empty());
    EXPECT_FALSE(publish.revisitmail);
}

TEST_F(Mails, DuringAnUploadOrAChangeoverWaitWithTheTextThatIsMade) {
    {
        const auto busy = publish.uloadftpbusy.try_hold();
        world.state.alarms.AlarmReason = "the dew point is below the alarm threshold";
        send_alarm_mail(world.copy);
    }
    EXPECT_TRUE(publish.revisitmail);
    EXPECT_TRUE(sent().empty());
    world.state.comm.changebusy.set();
    publish.revisitmail = false;
    uploadmail(world.copy);
    EXPECT_TRUE(publish.revisitmail);
    world.state.comm.changebusy.clear();
    world.state.alarms.AlarmReason = "something else by now";
    uploadmail(world.copy);
    ASSERT_EQ(sent().size(), 1U);
    EXPECT_EQ(sent()[0].subject, "Weather Alarm 14:05:07 21 Oct 2026");
    EXPECT_NE(sent()[0].body.find("because the dew point is below"), std::string::npos) << sent()[0].body;
    uploadmail(world.copy);
    EXPECT_EQ(sent().at(1).body, "It is +8.1 \260C") << "nothing is pending now: the schedule's mail is made";
}

TEST_F(Mails, TheAlarmsHoldsTheFlagWhileItIsMade) {
    // Another mail that asks meanwhile is not mixed into it.
    settings.MailList = {"07:00"};
    world.transfers.mail_steps.push_back({.after = 5s});
    world.pauses.start([&] { send_alarm_mail(world.copy); });
    EXPECT_TRUE(publish.emailbusy);
    at_station_time("07:00:02");
    world.pauses.pause(10s);
    ASSERT_EQ(sent().size(), 1U);
    EXPECT_TRUE(sent()[0].subject.starts_with("Weather Alarm "));
    EXPECT_TRUE(sent()[0].body.starts_with("Alarm: Automatic ALARM email")) << sent()[0].body;
}

}  // namespace
}  // namespace nimbry::test
