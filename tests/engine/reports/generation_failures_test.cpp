#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "engine/core/run_time_error.h"
#include "engine/publish/mail_body.h"
#include "engine/publish/publishing.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/wxtext.h"
#include "tests/engine/reports/tag_states.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::StartsWith;

/// A copy whose generators are given what they cannot read, or cannot write.
class GenerationFailures : public testing::Test {
protected:
    void put(const std::string& name, const std::string& bytes) { world.files.put(name, bytes); }
    [[nodiscard]] std::string file(const std::string& name) const { return world.files.contents(name); }
    /// The error that ends a generation of the pages; nothing when it does not.
    [[nodiscard]] std::optional<UnrecoverableError> failure() {
        try {
            genhtml(world.copy);
        } catch (const UnrecoverableError& error) {
            return error;
        }
        return std::nullopt;
    }
    /// Each notice, by the file that it names last.
    [[nodiscard]] std::vector<std::string> told_of() const {
        std::vector<std::string> names;
        for (const auto& balloon : world.notices.balloons) {
            const std::string& text = balloon.what.text;
            names.push_back(text.substr(text.rfind('\n') + 1));
        }
        return names;
    }

    KnownState world;
};

// An editor puts another file in a template's place, or takes it away, at any moment of a generation.
TEST_F(GenerationFailures, ATemplateThatIsReplacedWhileItIsReadGivesAWholePageAndTheNextOneIsNew) {
    const std::string old = "old ~~WEBOUTTEMP~~ old", now = "new ~~WEBOSHUMID~~ new";
    const std::string old_page = "old +8.1 \260C old", new_page = "new 54 % new";
    std::size_t moments = 1;
    for (std::size_t moment = 0; moment < moments; ++moment) {
        for (const bool away : {false, true}) {
            SCOPED_TRACE(moment);
            for (const char* name : {"myhtml.html", "myhtml5.html", "myhtml6.html"}) put(name, old);
            std::size_t calls = 0;
            world.files.before_each_change([&](const MemoryFiles::Call&) {
                if (calls++ != moment) return;
                put("myhtml.html", now);
                put("myhtml5.html", now);
                if (away) world.files.take_away("myhtml5.html");
            });
            genhtml(world.copy);
            world.files.before_each_change({});
            moments = std::max(moments, calls);
            if (calls <= moment) continue;  // the generation had ended by then
            for (const char* name : {"nbyxauto.html", "nbyxauto5.html"})
                EXPECT_TRUE(file(name) == old_page || file(name) == new_page || (away && !world.files.exists(name)))
                    << file(name);
            EXPECT_EQ(file("nbyxauto6.html"), old_page);
            genhtml(world.copy);
            EXPECT_EQ(file("nbyxauto.html"), new_page);
            EXPECT_EQ(world.files.exists("nbyxauto5.html"), !away);
        }
    }
    EXPECT_GT(moments, 6U);
}

// What is there under a template's name but is no file to be read

TEST_F(GenerationFailures, AMailWhoseTemplateCannotBeReadIsEmptyAndItIsToldOfOnce) {
    struct Mail {
        const char* file;
        void (*make)(Copy&);
    };
    for (const Mail& mail : {Mail{"mail_template.txt", genmail}, Mail{"mail_alm_template.txt", genAlarmMail},
                             Mail{"mail_co_template.txt", gencomail}}) {
        SCOPED_TRACE(mail.file);
        world.files.add_folder(mail.file);
        world.notices.balloons.clear();
        for (int times = 0; times < 3; ++times) {
            world.state.reports.mail_body = "old";
            mail.make(world.copy);
            EXPECT_EQ(world.state.reports.mail_body, "");
        }
        EXPECT_THAT(told_of(), ElementsAre(mail.file));
        EXPECT_FALSE(world.state.reports.mailGenBusy);
    }
    EXPECT_EQ(world.log_lines().size(), 3U);
}

TEST_F(GenerationFailures, AReportWhoseTemplateCannotBeReadStaysAndItIsToldOfOnce) {
    put("wxtexttemplate.txt", "new");
    put("wxtext.txt", "old");
    world.files.refuse("wxtexttemplate.txt", FileResult::permission);
    for (int times = 0; times < 3; ++times) wxtext(world.copy);
    EXPECT_EQ(file("wxtext.txt"), "old");
    EXPECT_THAT(told_of(), ElementsAre("wxtexttemplate.txt"));
    EXPECT_THAT(file("NimbData.txt"), StartsWith("21 Oct 2026,")) << "the data files need no template";
}

TEST_F(GenerationFailures, AWapPageWhoseTemplateCannotBeReadStaysAndItIsToldOfOnce) {
    world.files.add_folder("nimbrywap.wml");
    put("wx.wml", "old");
    put("myhtml.html", "page");
    for (int times = 0; times < 3; ++times) genhtml(world.copy);
    EXPECT_EQ(file("wx.wml"), "old");
    EXPECT_EQ(file("nbyxauto.html"), "page");
    EXPECT_THAT(told_of(), ElementsAre("nimbrywap.wml"));
}

// A disk that refuses

TEST_F(GenerationFailures, AWorkFileThatCannotBeWrittenEndsTheProgramAndLeavesTheOldPage) {
    put("myhtml.html", "new");
    put("nbyxauto.html", "old");
    world.files.refuse("temphtml.html", FileResult::disk_full);
    const auto error = failure();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, ErrorNumber::disk_full);
    EXPECT_EQ(error->tag, "genhtml");
    EXPECT_EQ(file("nbyxauto.html"), "old");
    EXPECT_EQ(world.state.readings.MaxGustMs, "6.2") << "the peak goes on";
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST_F(GenerationFailures, APageThatCannotBeReplacedEndsTheProgramAndLeavesBothFilesWhole) {
    put("myhtml.html", "new");
    put("nbyxauto.html", "old");
    world.files.refuse("nbyxauto.html", FileResult::permission);
    const auto error = failure();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, ErrorNumber::permission);
    EXPECT_EQ(file("nbyxauto.html"), "old");
    EXPECT_EQ(file("temphtml.html"), "new");
}

// Another generator in between

TEST_F(GenerationFailures, AMailThatIsMadeBetweenTwoPagesChangesNeither) {
    put("myhtml.html", "first");
    put("myhtml1.html", "~~WEBWINDGSS~~ ~~WEBMLTITLE~~");
    put("mail_alm_template.txt", "~~WEBMLTITLE~~~~WEBWINDGSS~~");
    world.state.publish.NimbryFTPSetup.MailTitle = "Title";
    world.state.alarms.AlarmReason = "the wind speed is above the alarm threshold";
    world.state.alarms.gust = AlarmGust{"72.4 km/h", "72.4", 20.1};
    world.pauses.after(0ms, [&] { genAlarmMail(world.copy); });
    genhtml(world.copy);
    const std::string asterisks = std::string(52, '*') + "\r\n\r\n";
    EXPECT_EQ(file("nbyxauto1.html"), "19.4 km/h Title\r\n" + asterisks);
    EXPECT_EQ(world.state.reports.mail_body,
              "Automatic ALARM email from Nimbry 2.02\r\nThis email was sent because the wind speed is above the alarm "
              "threshold\r\n" +
                  asterisks + "72.4 km/h");
}

// In a program that runs

struct CutTemplate {
    const char *what, *name, *report;
};

TEST(ATemplateThatIsCutInATag, EndsTheProgramInTheRoutineThatReadsIt) {
    for (const CutTemplate& cut :
         {CutTemplate{"a page, by the upload's timer", "myhtml.html", "Unrecoverable error 62 encountered in genhtml."},
          CutTemplate{"the text report, by the minute's timer", "wxtexttemplate.txt",
                      "Unrecoverable error 62 encountered in wxtext."}}) {
        SCOPED_TRACE(cut.what);
        StartedWorld world("\r\n[FTP]\r\nLocalSave=True\r\nLocalPath=/web\r\n");
        world.files.put("myhtml.html", "whole");
        world.files.put(cut.name, "It is ~~WEBOUTTEM");
        world.send_trains(2);
        world.run_for(2min);
        ASSERT_EQ(world.notices.boxes.size(), 1U);
        EXPECT_EQ(world.notices.boxes[0].what.text, std::string(cut.report) + "\r\nNimbry will now exit.");
        EXPECT_EQ(world.engine.exit_status(), 1);
    }
}

}  // namespace
}  // namespace nimbry::test
