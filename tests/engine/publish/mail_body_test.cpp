#include "engine/publish/mail_body.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/core/run_time_error.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using testing::HasSubstr;

const std::string asterisks(52, '*');

class MailBody : public testing::Test {
protected:
    [[nodiscard]] const std::string& body() const { return world.state.reports.mail_body; }
    KnownState world;
};

struct Mail {
    const char* routine;
    const char* file;
    void (*make)(Copy&);
};
constexpr Mail mails[] = {{"genmail", "mail_template.txt", genmail},
                          {"genAlarmMail", "mail_alm_template.txt", genAlarmMail},
                          {"gencomail", "mail_co_template.txt", gencomail}};

TEST_F(MailBody, EachMailIsMadeFromItsOwnTemplate) {
    for (const Mail& mail : mails) world.files.put(mail.file, std::string("It is ~~WEBOUTTEMP~~ in ") + mail.file);
    for (const Mail& mail : mails) {
        world.state.reports.new_data = true;
        mail.make(world.copy);
        EXPECT_EQ(body(), std::string("It is +8.1 \260C in ") + mail.file);
        EXPECT_FALSE(world.state.reports.mailGenBusy);
        EXPECT_FALSE(world.state.reports.new_data);
        EXPECT_EQ(world.state.readings.MaxGustMs, "6.2") << "only pages begin the peak anew";
    }
}

TEST_F(MailBody, WithoutATemplateTheMailIsEmpty) {
    for (const Mail& mail : mails) {
        world.state.reports.mail_body = "old";
        mail.make(world.copy);
        EXPECT_EQ(body(), "");
    }
}

TEST_F(MailBody, ATemplateThatEndsTooSoonBehindATildeIsTheErrorOfItsRoutine) {
    for (const Mail& mail : mails) {
        world.files.put(mail.file, "~~WEBOUT");
        try {
            mail.make(world.copy);
            ADD_FAILURE() << "no error in " << mail.routine;
        } catch (const UnrecoverableError& error) {
            EXPECT_EQ(error.tag, mail.routine);
            EXPECT_EQ(error.number, ErrorNumber::past_end);
        }
        EXPECT_FALSE(world.state.reports.mailGenBusy);
        EXPECT_FALSE(world.state.reports.IsAlarmMail);
    }
}

TEST_F(MailBody, AfterAnUnrecoverableErrorNoneIsMade) {
    world.files.put("mail_template.txt", "text");
    world.state.run.HaveError = true;
    genmail(world.copy);
    EXPECT_EQ(body(), "");
    EXPECT_FALSE(world.state.reports.mailGenBusy);
}

TEST_F(MailBody, TheHeadingIsTheTitleAndTheAsterisks) {
    world.files.put("mail_template.txt", "~~WEBMLTITLE~~text");
    genmail(world.copy);
    EXPECT_EQ(body(), "Weather at Home\r\n" + asterisks + "\r\n\r\ntext");
}

TEST_F(MailBody, TheAlarmsHeadingStandsAtTheTagsPlace) {
    world.files.put("mail_alm_template.txt", "a~~WEBMLTITLE~~b~~WEBMLTITLE~~c");
    world.state.alarms.AlarmReason = "the dew point is below the alarm threshold";
    genAlarmMail(world.copy);
    const std::string heading =
        "Automatic ALARM email from Nimbry 2.02\r\n"
        "This email was sent because the dew point is below the alarm threshold\r\n" +
        asterisks + "\r\n\r\n";
    EXPECT_EQ(body(), "a" + heading + "b" + heading + "c");
    EXPECT_FALSE(world.state.reports.IsAlarmMail);
}

TEST_F(MailBody, AnyMailShowsTheGustOfAStandingWindAlarm) {
    world.state.alarms.AlarmReason = "the wind speed is above the alarm threshold";
    world.state.alarms.gust = AlarmGust{"72.4 km/h", "72.4", 20.1};
    for (const Mail& mail : mails) {
        world.files.put(mail.file, "~~WEBWINDGSS~~");
        mail.make(world.copy);
        EXPECT_EQ(body(), "72.4 km/h") << mail.routine;
    }
}

TEST_F(MailBody, TheShortTextShowsThePresentGustAlsoWhileAWindAlarmStands) {
    world.state.alarms.AlarmReason = "the wind speed is above the alarm threshold";
    world.state.alarms.gust = AlarmGust{"72.4 km/h", "72.4", 20.1};
    world.files.put("mail_alm_template.txt", "~~WEBSMSHDRM~~ ~~WEBWINDGSS~~");
    genAlarmMail(world.copy);
    EXPECT_THAT(body(), HasSubstr(" Wgst:19.4km/h,123 (SE) "));
    EXPECT_TRUE(body().ends_with(" 72.4 km/h"));
}

TEST_F(MailBody, TheShortTextHasNoDegreeSignsAndNoBlanksBeforeUnits) {
    EXPECT_EQ(short_weather_text(world.copy),
              "T:+8.1C H:54% B:1013hPa,S Wgst:19.4km/h,123 (SE) Wavg:12.2km/h,98 (E)DP:-0.6C Rain:7mm Tin:+21.4C "
              "Hin:45%\r\nNBY 14:05 21 Oct 2026\r\n" +
                  asterisks);
}

TEST_F(MailBody, FaultyReadingsStandInTheShortTextAsError) {
    world.fail_every_sensor();
    EXPECT_EQ(short_weather_text(world.copy),
              "T:Error H:Error B:Error,S Wgst:Error,Error Wavg:Error,ErrorDP:-0.6C Rain:7mm Tin:Error "
              "Hin:Error\r\nNBY 14:05 21 Oct 2026\r\n" +
                  asterisks);
}

TEST_F(MailBody, TheShortTextIsThereOnlyWhileAMailIsMade) {
    world.files.put("mail_template.txt", "~~WEBSMSHDRM~~");
    genmail(world.copy);
    EXPECT_EQ(body(), short_weather_text(world.copy));
    EXPECT_EQ(world.tag("WEBSMSHDRM"), "");
}

TEST_F(MailBody, TheUtcTimeIsThatOfTheMail) {
    world.files.put("mail_template.txt", "~~WEBUTCTIME~~");
    world.clock.advance(std::chrono::seconds{3});
    genmail(world.copy);
    EXPECT_EQ(body(), "03:05:10");
}

}  // namespace
}  // namespace nimbry::test
