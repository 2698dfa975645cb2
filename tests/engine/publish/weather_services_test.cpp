#include "engine/publish/weather_services.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "engine/core/initprog.h"
#include "engine/publish/forced_run.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

class WeatherServices : public testing::Test {
protected:
    WeatherServices() {
        settings.chkWU = true;
        settings.WUuser = "KTEST1";
        settings.WUpass = "wp";
        settings.HWuser = "HTEST1";
        settings.HWpass = "hp";
        world.state.menu.mnuLogWU.checked = world.state.menu.mnuLogHW.checked = true;
    }
    void TearDown() override { world.pauses.end_all(); }

    [[nodiscard]] const auto& asked() const { return world.transfers.asked; }
    void answers(ScriptedTransfers::WebStep step) { world.transfers.web_steps.push_back(std::move(step)); }
    [[nodiscard]] std::string last_line() const { return world.log_lines().back(); }

    KnownState world;
    PublishState& publish = world.state.publish;
    InternetDialog& settings = publish.NimbryFTPSetup;
};

TEST_F(WeatherServices, AreToldEveryIntervalByTheTimersMinutes) {
    settings.txtWUMins = "5";
    for (int minute = 1; minute <= 14; ++minute) {
        weather_services(world.copy);
        EXPECT_EQ(asked().size(), static_cast<std::size_t>(minute / 5)) << minute;
    }
}

TEST_F(WeatherServices, AreNotToldByAClientNorWithAllThreeOff) {
    settings.txtWUMins = "1";
    world.state.settings.fromnet = true;
    weather_services(world.copy);
    wunderground(world.copy);
    world.state.settings.fromnet = false;
    settings.chkWU = false;
    weather_services(world.copy);
    EXPECT_EQ(publish.WuMinutes, 0);
    settings.chkWU = true;
    world.state.run.ProgramClosing = true;
    wunderground(world.copy);
    world.state.run.ProgramClosing = false;
    world.state.run.HaveError = true;
    wunderground(world.copy);
    EXPECT_TRUE(asked().empty());
}

TEST_F(WeatherServices, BothGetTheSameItems) {
    settings.chkHW = true;
    world.state.readings.MaxGustMph = 12;
    wunderground(world.copy);
    ASSERT_EQ(asked().size(), 2U);
    const auto items = [&](std::size_t n) { return asked()[n].url.substr(asked()[n].url.find("&dateutc")); };
    EXPECT_TRUE(asked()[0].url.starts_with("http://weatherstation.wunderground.com/")) << asked()[0].url;
    EXPECT_TRUE(asked()[1].url.starts_with("http://www.hamweather.net/")) << asked()[1].url;
    EXPECT_NE(items(0).find("&windgustmph=012"), std::string::npos);
    EXPECT_EQ(items(0), items(1)) << "the gust is read once for both";
    EXPECT_EQ(asked()[0].limit, 10s);
}

TEST_F(WeatherServices, DuringAChangeoverArePutOff) {
    world.state.comm.changebusy.set();
    wunderground(world.copy);
    EXPECT_TRUE(publish.revisitwu);
    EXPECT_TRUE(asked().empty());
}

TEST_F(WeatherServices, AreToldOneReportAtATimeWithTheButtonInRed) {
    answers({.after = 5s});
    world.pauses.start([&] { wunderground(world.copy); });
    EXPECT_TRUE(publish.wubusy);
    EXPECT_EQ(world.state.menu.fmb[2].fore, colours::red);
    wunderground(world.copy);
    EXPECT_EQ(asked().size(), 1U);
    world.pauses.pause(6s);
    EXPECT_FALSE(publish.wubusy);
    EXPECT_EQ(world.state.menu.fmb[2].fore, colours::black);
}

struct ReplyCase {
    const char* what;
    ScriptedTransfers::WebStep step;
    const char *underground, *for_you, *result;
};

TEST_F(WeatherServices, TheReplyIsClassifiedByItsFirstBytes) {
    using End = WebReply::End;
    settings.chkHW = true;
    const std::vector<ReplyCase> cases{
        {"any text is fine",
         {.body = "INVALIDPASSWORDID"},
         " Weather Underground upload OK",
         " Weatherforyou upload OK",
         "ok"},
        {"an error of the server's too",
         {.status = 500, .body = "oops"},
         " Weather Underground upload OK",
         " Weatherforyou upload OK",
         "ok"},
        {"404 in the text",
         {.body = "<h1>404</h1>"},
         " Weather Underground upload Weather Underground File not found (Error 404)",
         " Weatherforyou upload Weatherforyou File not found (Error 404)",
         "Weather Underground File not found (Error 404)"},
        {"404 as the status",
         {.status = 404},
         " Weather Underground upload Weather Underground File not found (Error 404)",
         " Weatherforyou upload Weatherforyou File not found (Error 404)",
         "Weather Underground File not found (Error 404)"},
        {"an empty reply",
         {},
         " Weather Underground upload Weather Underground Server not found",
         " Weatherforyou upload Weatherforyou Server not found",
         "Weather Underground Server not found"},
        {"no server",
         {.end = End::no_connection, .status = 0},
         " Weather Underground upload Weather Underground Server not found",
         " Weatherforyou upload Weatherforyou Server not found",
         "Weather Underground Server not found"},
        {"silence",
         {.end = End::timed_out, .status = 0},
         " Weather Underground upload Failure. Connection timed out",
         " Weatherforyou upload Failure. Connection timed out",
         "Weather Underground Connection timed out"},
    };
    for (const ReplyCase& c : cases) {
        SCOPED_TRACE(c.what);
        answers(c.step);
        answers(c.step);
        wunderground(world.copy);
        const auto lines = world.log_lines();
        ASSERT_GE(lines.size(), 2U);
        EXPECT_EQ(lines[lines.size() - 2], std::string("21 Oct 2026 14:05:07") + c.underground);
        EXPECT_EQ(lines.back(), std::string("21 Oct 2026 14:05:07") + c.for_you);
        EXPECT_EQ(publish.last_weather.result, c.result);
    }
    EXPECT_EQ(publish.last_weather.runs, cases.size());
    EXPECT_TRUE(world.notices.balloons.empty());
}

TEST_F(WeatherServices, AreLoggedEachByItsOwnSwitch) {
    settings.chkHW = true;
    world.state.menu.mnuLogWU.checked = false;
    const std::size_t before = world.log_lines().size();
    wunderground(world.copy);
    EXPECT_EQ(world.log_lines().size(), before + 1);
    EXPECT_TRUE(last_line().ends_with(" Weatherforyou upload Weatherforyou Server not found"));
}

TEST_F(WeatherServices, WithoutALineThatIsToldAndLogged) {
    world.transfers.online = false;
    wunderground(world.copy);
    EXPECT_TRUE(asked().empty());
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Upload Error");
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Nimbry was unable to make a connection\r\nand did not complete Weather Underground upload!");
    const auto lines = world.log_lines();
    EXPECT_EQ(lines[lines.size() - 2],
              "21 Oct 2026 14:05:07 Weather Underground upload failed: Unable to connect to Internet");
    EXPECT_EQ(lines.back(), "21 Oct 2026 14:05:07 Weatherforyou upload failed: Unable to connect to Internet");
    EXPECT_EQ(world.transfers.reachability_asked.front(), "weatherstation.wunderground.com");
    EXPECT_FALSE(publish.wubusy);
}

TEST_F(WeatherServices, TheGustAndTheRainGoOnWhereOnlyAPRSIsTold) {
    settings.chkWU = false;
    settings.chkAPRS = true;
    world.state.readings.MaxGustMph = 12;
    wunderground(world.copy);
    EXPECT_TRUE(asked().empty());
    EXPECT_EQ(world.state.readings.MaxGustMph, 0);
    EXPECT_EQ(publish.interval_rain.position, 1);
    EXPECT_EQ(publish.last_weather.runs, 0U);
    world.transfers.online = false;
    wunderground(world.copy);
    EXPECT_EQ(publish.last_weather.runs, 0U);
    EXPECT_EQ(publish.last_aprs.result, "Unable to connect to Internet");
}

TEST_F(WeatherServices, TheLineIsLookedForAlsoWhereNobodyTakesPart) {
    settings.WUuser = settings.HWuser = "";
    world.transfers.online = false;
    run_forced(world.copy, ForcedRun::weather);
    ASSERT_EQ(world.notices.balloons.size(), 2U);
    EXPECT_EQ(world.notices.balloons[1].what.title, "Upload Error");
}

struct UserCase {
    const char* user;
    bool active, forced, sent;
};

TEST_F(WeatherServices, AForcedReportGoesToThoseWithAUserOfMoreThanFourCharactersWhetherOnOrOff) {
    for (const UserCase& c : std::vector<UserCase>{{"KTEST", false, true, true},
                                                   {"KTES", false, true, false},
                                                   {"KTES", true, true, false},
                                                   {" KTES ", true, true, false},
                                                   {"KTES", true, false, true},
                                                   {"KTEST", false, false, false}}) {
        SCOPED_TRACE(std::string(c.user) + (c.active ? " on" : " off") + (c.forced ? " forced" : ""));
        world.transfers.asked.clear();
        settings.chkWU = c.active;
        settings.WUuser = c.user;
        settings.HWuser = "";
        if (c.forced) {
            run_forced(world.copy, ForcedRun::weather);
        } else {
            wunderground(world.copy);
        }
        EXPECT_EQ(!asked().empty(), c.sent);
    }
}

TEST_F(WeatherServices, AForcedReportShowsItsNotice) {
    run_forced(world.copy, ForcedRun::weather);
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Performing forced Weather Undergound/Weatherforyou upload\r\nPlease wait until the upload completes\r\n"
              "and the Internet Settings window re-appears.");
    EXPECT_NE(asked().at(0).url.find("&rainin=&"), std::string::npos) << asked()[0].url;
}

TEST_F(WeatherServices, TheLineIsHungUpOnlyWhereThisProgramHasDialled) {
    settings.ChkHangup = true;
    wunderground(world.copy);
    EXPECT_EQ(world.desktop.hang_ups, 0);
    publish.ProgramDialled = true;
    wunderground(world.copy);
    EXPECT_EQ(world.desktop.hang_ups, 1);
}

}  // namespace
}  // namespace nimbry::test
