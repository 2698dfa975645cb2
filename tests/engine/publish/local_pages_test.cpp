#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/publish/local_pages.h"
#include "engine/publish/local_save.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class LocalPages : public testing::Test {
protected:
    LocalPages() {
        world.files.add_folder("/web");
        world.state.publish.NimbryFTPSetup.chkLocal = true;
        world.state.publish.NimbryFTPSetup.txtLocalPath = "/web";
        world.state.publish.NimbryFTPSetup.FTPRemoteFile = "weather.htm";
    }
    void put(const std::string& name) { world.files.put(name, "new " + name); }
    void save() { localsave(world.copy); }
    /// What lies in the folder, in the order in which it came there.
    [[nodiscard]] std::vector<std::string> arrived() const {
        std::vector<std::string> names;
        for (const MemoryFiles::Call& call : world.files.calls()) {
            if (call.operation == "rename" && call.result == FileResult::ok) names.push_back(call.other);
        }
        return names;
    }
    [[nodiscard]] std::string web(const std::string& name) const { return world.files.contents("/web/" + name); }

    KnownState world;
};

TEST_F(LocalPages, EverythingFinishedGoesThereInItsOrderUnderItsNameOutside) {
    for (const char* name : {"nimbryUI.txt", "NimbData.csv", "NimbData.txt", "nimbryraw.txt", "nimbrysummary.html",
                             "nbyxauto99.html", "nbyxauto2.html", "nbyxauto.html", "wx.wml", "VidCap.png", "VidCap.jpg",
                             "wxtext.txt", "APRS.txt", "nbyxauto100.html"})
        put(name);
    save();
    EXPECT_THAT(arrived(),
                ElementsAre("/web/VidCap.jpg", "/web/VidCap.png", "/web/wx.wml", "/web/weather.htm",
                            "/web/weather2.htm", "/web/weather99.htm", "/web/nimbrysummary.html", "/web/nimbryraw.txt",
                            "/web/NimbData.txt", "/web/NimbData.csv", "/web/nimbryUI.txt"));
    EXPECT_EQ(web("weather2.htm"), "new nbyxauto2.html");
    EXPECT_FALSE(world.files.exists("/web/weather2.htm.new"));
    EXPECT_FALSE(world.state.reports.LocalSaveBusy);
}

TEST_F(LocalPages, TheGraphsGoLastWhereTheyAreMade) {
    put("nimbryUI.txt");
    put("graph1.svg");
    put("graph6.svg");
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/nimbryUI.txt"));
    world.files.put("Nimbry.ini", "[Main]\r\nGraphFiles=True\r\n");
    world.ini.read();
    world.files.forget_calls();
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/nimbryUI.txt", "/web/graph1.svg", "/web/graph6.svg"));
}

TEST_F(LocalPages, WhatIsThereIsReplacedAndWhatIsMissingHereStays) {
    world.files.put("/web/wx.wml", "old");
    world.files.put("/web/nimbryraw.txt", "old");
    world.files.put("/web/wx.wml.new", "left over");
    put("wx.wml");
    save();
    EXPECT_EQ(web("wx.wml"), "new wx.wml");
    EXPECT_EQ(web("nimbryraw.txt"), "old");
}

TEST_F(LocalPages, NoPageGoesWithoutADotInTheRemoteName) {
    world.state.publish.NimbryFTPSetup.FTPRemoteFile = "weather";
    put("nbyxauto.html");
    put("nimbryraw.txt");
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/nimbryraw.txt"));
}

TEST_F(LocalPages, APictureGoesWhileItIsYoungerThanThreeUploads) {
    world.state.publish.FtpMinutes = 2;
    put("VidCap.jpg");
    world.clock.advance(5min + 59s);
    put("VidCap.png");
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/VidCap.jpg", "/web/VidCap.png"));
    world.files.forget_calls();
    world.clock.advance(1s);
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/VidCap.png"));
}

TEST_F(LocalPages, APictureIsFoundUnderAnyCase) {
    put("vidcap.JPG");
    save();
    EXPECT_THAT(arrived(), ElementsAre("/web/VidCap.jpg"));
}

TEST_F(LocalPages, NothingGoesWhileItIsOff) {
    world.state.publish.NimbryFTPSetup.chkLocal = false;
    put("wx.wml");
    save();
    EXPECT_THAT(arrived(), IsEmpty());
}

TEST_F(LocalPages, OneRunsAtATime) {
    put("wx.wml");
    const auto busy = world.state.reports.LocalSaveBusy.try_hold();
    save();
    EXPECT_THAT(arrived(), IsEmpty());
}

TEST_F(LocalPages, AFolderThatIsNotThereIsNoError) {
    put("wx.wml");
    for (const char* folder : {"/nowhere", "C:\\", ""}) {
        world.state.publish.NimbryFTPSetup.txtLocalPath = folder;
        save();
    }
    EXPECT_THAT(arrived(), IsEmpty());
    EXPECT_THAT(world.notices.balloons, IsEmpty());
    EXPECT_THAT(world.log_lines(), IsEmpty());
}

TEST_F(LocalPages, TheFirstFileThatCannotBeWrittenIsToldOfAndEndsIt) {
    put("wx.wml");
    put("nimbryraw.txt");
    put("NimbData.txt");
    world.files.refuse("/web/nimbryraw.txt", FileResult::permission);
    save();
    EXPECT_EQ(web("wx.wml"), "new wx.wml");
    EXPECT_EQ(web("NimbData.txt"), "");
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Local Save Error");
    EXPECT_EQ(world.notices.balloons[0].what.text, "Local save error writing to file: nimbryraw.txt");
    EXPECT_THAT(world.log_lines(), ElementsAre("21 Oct 2026 14:05:07 Local save error writing to file: nimbryraw.txt"));
    EXPECT_FALSE(world.state.reports.LocalSaveBusy);
}

TEST(LocalPath, HasOneSeparator) {
    PublishState publish;
    const auto joined = [&](const char* folder) {
        publish.NimbryFTPSetup.txtLocalPath = folder;
        return local_path(publish, "a");
    };
    EXPECT_EQ(joined("/web"), "/web/a");
    EXPECT_EQ(joined("/web/"), "/web/a");
    EXPECT_EQ(joined("C:\\"), "C:/a");
    EXPECT_EQ(joined(""), "");
}

}  // namespace
}  // namespace nimbry::test
