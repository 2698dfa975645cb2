#include "engine/core/switches.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/world/world.h"

namespace nimbry {
namespace {

using Texts = std::vector<std::string>;

struct SwitchCase {
    const char* entry;
    const char* key;
    bool checked_at_first;
};

const std::vector<SwitchCase> cases{
    {"mnulogFTP", "mlogftp", false},         {"mnulogMail", "mlogmail", false},
    {"mnuLogWU", "WUactive", false},         {"mnuLogHW", "HWactive", false},
    {"mnuLogAPRS", "LogAPRS", false},        {"mnuHide", "Hide", false},
    {"mnusystray", "MinSysTray", false},     {"mnuCpop", "Cpop", true},
    {"mnuDisableGraphs", "DrwGrafs", false}, {"mnuInGraphs", "InGraphs", true},
    {"mnuNoErrorPop", "ErrorPop", false},    {"mnuNoCCPop", "CCPop", false},
    {"mnuNoFTPPop", "NoFTPop", false},       {"mnuNoMailPop", "NoMailPop", false},
};

class Switches : public testing::Test {
protected:
    Switches() { reset_main_menu(world.state().menu); }

    Box& entry(const Switch& which) { return world.state().menu.*which.entry; }

    test::World world;
};

TEST_F(Switches, FlipTheirCheckAndWriteTheirKeyAtEachClick) {
    for (const SwitchCase& c : cases) {
        SCOPED_TRACE(c.entry);
        const Switch* which = switch_named(c.entry);
        ASSERT_NE(which, nullptr);
        EXPECT_EQ(key_of(*which), c.key);
        EXPECT_EQ(entry(*which).checked, c.checked_at_first);
        for (const bool now : {!c.checked_at_first, c.checked_at_first}) {
            click_switch(world.copy(), *which);
            EXPECT_EQ(entry(*which).checked, now);
            EXPECT_EQ(world.state().settings.*which->setting, now);
            EXPECT_EQ(world.setting("Main", c.key), now ? "True" : "False");
        }
    }
}

TEST_F(Switches, AreAllOfThemAndOneWithoutAKey) {
    EXPECT_EQ(switches().size(), cases.size() + 1);
    const Switch* debug = switch_named("mnuFTPdebug");
    ASSERT_NE(debug, nullptr);
    EXPECT_EQ(key_of(*debug), "");
    EXPECT_FALSE(entry(*debug).checked);
    world.files.forget_calls();
    click_switch(world.copy(), *debug);
    EXPECT_TRUE(entry(*debug).checked);
    EXPECT_TRUE(world.files.calls().empty()) << "a switch of this run is not written";
    EXPECT_EQ(switch_named("mnuBIG"), nullptr) << "an entry without a check mark";
}

TEST_F(Switches, ClickFirst) {
    click_switch(world.copy(), *switch_named("mnuHide"));
    EXPECT_EQ(world.sounds.played, Texts{"click.WAV"});
    ASSERT_EQ(world.journal.lines().size(), 2U);
    EXPECT_NE(world.journal.lines()[0].find("click.WAV"), std::string::npos);
    EXPECT_NE(world.journal.lines()[1].find("replace Nimbry.ini"), std::string::npos);
}

TEST_F(Switches, FlipAlsoWhenTheKeyCannotBeWritten) {
    world.files.refuse_changes(FileResult::permission);
    const Switch& hide = *switch_named("mnuHide");
    click_switch(world.copy(), hide);
    EXPECT_TRUE(entry(hide).checked);
    EXPECT_TRUE(world.state().settings.Hide);
    EXPECT_TRUE(world.notices.balloons.empty());
    EXPECT_TRUE(world.notices.boxes.empty());
}

TEST_F(Switches, FollowTheCheckMarkThatStandsInTheMenu) {
    const Switch& hide = *switch_named("mnuHide");
    entry(hide).checked = true;
    click_switch(world.copy(), hide);
    EXPECT_FALSE(world.state().settings.Hide);
    EXPECT_EQ(world.setting("Main", "Hide"), "False");
}

}  // namespace
}  // namespace nimbry
