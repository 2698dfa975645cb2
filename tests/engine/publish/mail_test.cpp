#include "engine/publish/mail.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "engine/publish/forced_run.h"
#include "engine/publish/mail_body.h"
#include "engine/records/extremes.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Names = std::vector<std::string>;

/// A copy that mails, and a server that takes what it is told to.
class Mails : public testing::Test {
protected:
    Mails() {
        settings.ChkSendMail = true;
        settings.MailServer = " mail.home.net ";
        settings.MailTo = "a@home.net; b@work.org ;;";
        settings.MailMyAddr = " me@home.net ";
        world.state.menu.mnulogMail.checked = true;
        world.files.put("mail_template.txt", "It is ~~WEBOUTTEMP~~");
        world.files.put("mail_alm_template.txt", "Alarm: ~~WEBMLTITLE~~");
        world.files.put("mail_co_template.txt", "The day had ~~WEBRAINTOD~~");
        world.files.put("myhtml.html", "page");
    }
    void TearDown() override { world.pauses.end_all(); }

    [[nodiscard]] const std::vector<Mail>& sent() const { return world.transfers.mails; }
    void fails_with(const std::string& fault) { world.transfers.mail_steps.push_back({.fault = fault}); }
    /// A train at this time of the station's day, and the schedule's look at it.
    void at_station_time(const std::string& time) {
        world.state.readings.rdattime = time;
        const auto part = [&](std::size_t from) { return std::stoi(time.substr(from, 2)); };
        world.state.readings.dtvar = std::chrono::floor<std::chrono::days>(october_afternoon) +
                                     std::chrono::hours{part(0)} + std::chrono::minutes{part(3)} +
                                     std::chrono::seconds{part(6)};
        send_scheduled_mails(world.copy);
        world.pauses.pause(1s);
    }
    [[nodiscard]] Names balloon_titles() const {
        Names titles;
        for (const auto& shown : world.notices.balloons) titles.push_back(shown.what.title);
        return titles;
    }
    [[nodiscard]] bool logged(const std::string& end) const {
        const auto lines = world.log_lines();
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.ends_with(end); });
    }

    KnownState world;
    InternetDialog& settings = world.state.publish.NimbryFTPSetup;
    PublishState& publish = world.state.publish;
};

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

TEST_F(Mails, OfTheScheduleGoInTheFirstTenSecondsOfTheirMinuteOnce) {
    settings.MailList = {"07:00", "*CHANGE*", "19:30"};
    at_station_time("06:59:59");
    EXPECT_TRUE(sent().empty());
    at_station_time("07:00:00");
    EXPECT_EQ(sent().size(), 1U);
    at_station_time("07:00:09");
    EXPECT_EQ(sent().size(), 1U) << "a second train in the same ten seconds";
    at_station_time("07:00:10");
    at_station_time("19:30:10");
    EXPECT_EQ(sent().size(), 1U) << "too late";
    at_station_time("19:30:09");
    EXPECT_EQ(sent().size(), 2U);
    at_station_time("09:00:00");
    at_station_time("08:59:52");
    EXPECT_EQ(sent().size(), 2U) << "the entry of the changeover is no time";
    world.state.readings.dtvar = *world.state.readings.dtvar + std::chrono::days{1};
    world.state.readings.rdattime = "19:30:00";
    world.state.readings.dtvar = std::chrono::floor<std::chrono::days>(*world.state.readings.dtvar) + 19h + 30min;
    send_scheduled_mails(world.copy);
    world.pauses.pause(1s);
    EXPECT_EQ(sent().size(), 3U) << "the next day it goes again";
}

TEST_F(Mails, OfTheScheduleHaveThePagesMadeFirst) {
    settings.MailList = {"07:00"};
    settings.MailAttach = "nbyxauto.html";
    at_station_time("07:00:00");
    EXPECT_EQ(world.files.contents("nbyxauto.html"), "page");
    EXPECT_EQ(sent().at(0).attachments.size(), 1U);
}

TEST_F(Mails, OfTheScheduleHaveTheMonthlySummaryMadeWhereItIsAskedFor) {
    settings.MailList = {"07:00", "08:00"};
    world.files.put("nbextreme.log", "");
    at_station_time("07:00:00");
    EXPECT_FALSE(world.files.exists("altemp.csv"));
    settings.MailReport = true;
    at_station_time("08:00:00");
    EXPECT_TRUE(world.files.exists("altemp.csv"));
}

TEST_F(Mails, OfTheScheduleHoldNobodyUp) {
    settings.MailList = {"07:00"};
    world.transfers.mail_steps.push_back({.after = 60s});
    const Instant before = world.clock.monotonic();
    world.state.readings.rdattime = "07:00:00";
    send_scheduled_mails(world.copy);
    EXPECT_EQ(world.clock.monotonic(), before) << "the cycle goes on at once";
    world.pauses.pause(1s);
    EXPECT_TRUE(publish.emailbusy);
}

TEST_F(Mails, OfTheChangeoverIsTheOneMadeBeforeTheResetOncePerEntry) {
    settings.MailList = {"07:00", "*CHANGE*", "*CHANGE*"};
    world.state.comm.changebusy.set();
    gencomail(world.copy);
    const std::string made = world.state.reports.mail_body;
    EXPECT_NE(made, "");
    world.files.put("mail_co_template.txt", "an emptied day");
    EXPECT_TRUE(send_changeover_mails(world.copy));
    drop_unsent_changeover_mail(world.copy);
    world.state.comm.changebusy.clear();
    world.pauses.pause(1s);
    ASSERT_EQ(sent().size(), 2U);
    for (const Mail& mail : sent()) {
        EXPECT_EQ(mail.body, made);
        EXPECT_TRUE(mail.subject.starts_with("Weather Data ")) << mail.subject;
    }
}

TEST_F(Mails, WithoutAnEntryForItTheChangeoverSendsNoneAndItsMailIsForgotten) {
    settings.MailList = {"07:00"};
    gencomail(world.copy);
    EXPECT_FALSE(send_changeover_mails(world.copy));
    drop_unsent_changeover_mail(world.copy);
    uploadmail(world.copy);
    EXPECT_EQ(sent().at(0).body, "It is +8.1 \260C");
}

TEST_F(Mails, OfTheChangeoverWaitsForAnUploadAndIsNotForgottenThen) {
    settings.MailList = {"*CHANGE*"};
    gencomail(world.copy);
    const std::string made = world.state.reports.mail_body;
    {
        const auto busy = publish.uloadftpbusy.try_hold();
        EXPECT_TRUE(send_changeover_mails(world.copy));
    }
    EXPECT_TRUE(publish.revisitmail);
    drop_unsent_changeover_mail(world.copy);
    publish.revisitmail = false;
    uploadmail(world.copy);
    EXPECT_EQ(sent().at(0).body, made);
}

TEST_F(Mails, AskedForByTheButtonAreMadeAnewAndTheirSuccessIsShown) {
    world.state.setup.FTP.open = true;
    world.transfers.mail_steps.push_back({.after = 5s});
    world.pauses.start([&] { run_forced(world.copy, ForcedRun::mail); });
    world.pauses.pause(1s);
    EXPECT_TRUE(publish.FtpForced);
    EXPECT_EQ(publish.lblStatus, "Forced email send");
    EXPECT_TRUE(world.state.setup.FTP.hidden);
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Performing a forced email send\r\nPlease wait until sending completes\r\n"
              "and the Internet Settings window re-appears.");
    run_forced(world.copy, ForcedRun::weather);
    EXPECT_EQ(publish.lblStatus, "Forced email send") << "one at a time";
    EXPECT_TRUE(publish.FtpForced);
    world.pauses.pause(5s);
    ASSERT_EQ(world.notices.balloons.size(), 2U);
    EXPECT_EQ(world.notices.balloons[1].what.title, "Email success");
    EXPECT_EQ(world.notices.balloons[1].what.text, "Email was sent successfully");
    EXPECT_FALSE(publish.FtpForced);
    EXPECT_EQ(publish.lblStatus, "");
    EXPECT_FALSE(world.state.setup.FTP.hidden);
}

TEST_F(Mails, TheButtonOfAnotherKindShowsNoNoticeOfTheMail) {
    publish.FtpForced = true;
    publish.lblStatus = "Forced FTP upload";
    uploadmail(world.copy);
    EXPECT_EQ(balloon_titles(), Names{"Email success"});
}

TEST_F(Mails, AreFollowedByTheUploadThatWasPutOff) {
    publish.revisitftp = true;
    world.files.add_folder("/web");
    settings.chkLocal = true;
    settings.txtLocalPath = "/web";
    settings.FTPRemoteFile = "index.html";
    uploadmail(world.copy);
    EXPECT_FALSE(publish.revisitftp);
    EXPECT_TRUE(world.files.exists("/web/index.html"));
}

TEST_F(Mails, AreFollowedByAnUploadWhereThatIsAskedForAlsoAfterAFailure) {
    world.files.add_folder("/web");
    settings.chkLocal = true;
    settings.txtLocalPath = "/web";
    settings.FTPRemoteFile = "index.html";
    uploadmail(world.copy);
    EXPECT_FALSE(world.files.exists("/web/index.html"));
    settings.ChkDoEmailToo = true;
    fails_with("Timed out");
    uploadmail(world.copy);
    EXPECT_TRUE(world.files.exists("/web/index.html"));
}

}  // namespace
}  // namespace nimbry::test
