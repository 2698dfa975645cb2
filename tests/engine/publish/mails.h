#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "engine/publish/mail.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {

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
        world.pauses.pause(std::chrono::seconds{1});
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

}  // namespace nimbry::test
