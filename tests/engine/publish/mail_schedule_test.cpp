#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "engine/publish/forced_run.h"
#include "engine/publish/mail.h"
#include "engine/publish/mail_body.h"
#include "tests/engine/publish/mails.h"

namespace nimbry::test {
namespace {

// Which mails go when, and what follows them.

using namespace std::chrono_literals;

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
