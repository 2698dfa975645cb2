#include <chrono>
#include <string>
#include <vector>

#include "engine/control/copy_status.h"
#include "tests/engine/control/verbs_fixture.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Complaints = std::vector<std::string>;

class ForceVerb : public VerbsTest {
protected:
    ForceVerb() {
        settings.WUuser = "KTEST1";
        settings.WUpass = "p";
        settings.MailServer = "mail.home.net";
        settings.MailTo = settings.MailMyAddr = "me@home.net";
    }
    /// A line of the status, by its name.
    std::string status(const std::string& name) {
        std::string lines = status_lines(copy_status(world.copy()));
        const std::size_t at = lines.find(name + "\t");
        if (at == std::string::npos) return "(none)";
        const std::size_t from = at + name.size() + 1;
        return lines.substr(from, lines.find('\n', from) - from);
    }
    InternetDialog& settings = world.state().publish.NimbryFTPSetup;
};

TEST_F(ForceVerb, ReturnsWhenTheMailHasGone) {
    world.transfers.mail_steps.push_back({.after = 500ms});
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::done);
    EXPECT_EQ(world.transfers.mails.size(), 1U);
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(asker.complaints, Complaints{});
}

TEST_F(ForceVerb, TellsWhyItFailed) {
    world.transfers.mail_steps.push_back({.fault = "550 User unknown"});
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"550 User unknown"});
}

TEST_F(ForceVerb, SaysWhatAMailThatWasNeverSetUpLacks) {
    settings = {};
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"The Mail Server field has not been completed."});
}

TEST_F(ForceVerb, TellsOfTheServicesThatItReached) {
    world.transfers.web_steps.push_back({.body = "success"});
    EXPECT_EQ(ask({"force", "weather"}), VerbStatus::done);
    world.transfers.web_steps.push_back({.status = 404});
    EXPECT_EQ(ask({"force", "weather"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"Weather Underground File not found (Error 404)"});
    settings.WUuser = "K";
    EXPECT_EQ(ask({"force", "weather"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"Nothing was sent"});
}

TEST_F(ForceVerb, IsRefusedAsTheDialogIs) {
    settings.chkWU = true;
    settings.WUuser = "";
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"The Weather Underground upload details fields have not been completed."});
    world.state().publish.emailbusy.set();
    EXPECT_EQ(ask({"force", "weather"}), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, Complaints{"Nimbry is currently busy sending email"});
}

TEST_F(ForceVerb, IsNothingForAClient) {
    world.state().settings.fromnet = true;
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::failed);
    EXPECT_TRUE(world.transfers.mails.empty());
}

TEST_F(ForceVerb, KnowsThreeWords) {
    for (const Words& words : std::vector<Words>{{"force"}, {"force", "all"}, {"force", "mail", "now"}})
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
}

TEST_F(ForceVerb, TheStatusTellsWhatRanLastAndHowItEnded) {
    for (const char* kind : {"ftp", "mail", "weather", "aprs"}) {
        EXPECT_EQ(status(std::string("uploads.") + kind + ".last_end"), "");
        EXPECT_EQ(status(std::string("uploads.") + kind + ".last_result"), "");
        EXPECT_EQ(status(std::string("uploads.") + kind + ".next_due"), "");
    }
    world.transfers.mail_steps.push_back({.fault = "Timed out"});
    EXPECT_EQ(ask({"force", "mail"}), VerbStatus::failed);
    EXPECT_NE(status("uploads.mail.last_end"), "");
    EXPECT_EQ(status("uploads.mail.last_result"), "Timed out");
    EXPECT_EQ(status("uploads.ftp.last_end"), "");
}

TEST_F(ForceVerb, TheStatusTellsWhatIsDueNext) {
    // The computer's clock shows 14:00:00 at the start; the start takes two seconds.
    world.clock.set_computer_time(std::chrono::local_days{std::chrono::October / 5 / 2026} + 14h);
    settings.chkWU = settings.chkAPRS = true;
    settings.txtWUMins = "5";
    settings.ChkEnableFTP = true;
    Timers& timers = world.copy().timers;
    timers.start(TimerId::timWU, world.clock.monotonic());
    timers.start(TimerId::TimerFTP, world.clock.monotonic());
    EXPECT_EQ(status("uploads.weather.next_due"), "05 Oct 2026 14:05:00");
    EXPECT_EQ(status("uploads.aprs.next_due"), "05 Oct 2026 14:10:00") << "the first call sends nothing";
    world.state().publish.AprsSkipped = true;
    world.state().publish.WuMinutes = 3;
    EXPECT_EQ(status("uploads.weather.next_due"), "05 Oct 2026 14:02:00");
    EXPECT_EQ(status("uploads.aprs.next_due"), "05 Oct 2026 14:02:00");
    EXPECT_EQ(status("uploads.ftp.next_due"), "05 Oct 2026 14:00:30");
    world.state().publish.FtpStartupDone = true;
    world.state().publish.FtpTicks = 1;
    EXPECT_EQ(status("uploads.ftp.next_due"), "05 Oct 2026 14:01:50") << "eleven ticks to the twelfth";
    settings.chkWU = settings.chkAPRS = settings.ChkEnableFTP = false;
    EXPECT_EQ(status("uploads.weather.next_due"), "");
    EXPECT_EQ(status("uploads.aprs.next_due"), "");
    EXPECT_EQ(status("uploads.ftp.next_due"), "");
}

TEST_F(ForceVerb, TheStatusTellsTheNextMailByTheStationsClock) {
    settings.ChkSendMail = true;
    settings.MailList = {"19:30", "07:00", "25:00", "often"};
    world.state().readings.dtvar = std::chrono::local_days{std::chrono::October / 5 / 2026} + 7h;
    EXPECT_EQ(status("uploads.mail.next_due"), "05 Oct 2026 19:30:00");
    *world.state().readings.dtvar += 13h;
    EXPECT_EQ(status("uploads.mail.next_due"), "06 Oct 2026 07:00:00");
    settings.MailList = {"*CHANGE*"};
    EXPECT_EQ(status("uploads.mail.next_due"), "06 Oct 2026 08:59:50");
    settings.ChkSendMail = false;
    EXPECT_EQ(status("uploads.mail.next_due"), "");
}

}  // namespace
}  // namespace nimbry::test
