#include "engine/displays/notice_list.h"

#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

TEST(NoticeList, KeepsTheLastFifty) {
    NoticeList list;
    for (int i = 1; i <= 50; ++i) list.add({CivilTime{}, std::to_string(i), "", ""});
    ASSERT_EQ(list.notices.size(), 50u);
    EXPECT_EQ(list.notices.front().title, "1");
    list.add({CivilTime{}, "51", "", ""});
    EXPECT_EQ(list.notices.size(), 50u);
    EXPECT_EQ(list.notices.front().title, "2");
    EXPECT_EQ(list.notices.back().title, "51");
}

TEST(NoticeList, HoldsEveryBalloonAndBoxOfARunWithItsComputersTime) {
    StartedWorld world;
    world.clock.set_computer_time(*civil_time({2026, 12, 31, 23, 59, 58}));
    world.notices.will_answer(Answer::yes);
    world.act([&] {
        Notices& notices = world.copy().ports.notices;
        notices.balloon({.title = "Comms Error", .text = "No data\r\nat all", .icon = "x"});
        EXPECT_EQ(notices.box({.title = "Nimbry message", .text = "Sure?", .icon = "?", .choices = Choices::yes_no}),
                  Answer::yes);
    });
    const std::deque<Notice>& notices = world.state().notices.notices;
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(stamp_text(notices[0].time), "31 Dec 2026 23:59:58");
    EXPECT_EQ(notices[0].title, "Comms Error");
    EXPECT_EQ(notices[0].text, "No data\r\nat all");
    EXPECT_EQ(notices[0].icon, "x");
    EXPECT_EQ(notices[1].title, "Nimbry message");
    EXPECT_EQ(notices[1].icon, "?");
    EXPECT_EQ(world.notices.balloons.size(), 1u) << "and each is shown";
    EXPECT_EQ(world.notices.boxes.size(), 1u);
}

TEST(NoticeList, ABoxIsKeptWhileItStillStands) {
    StartedWorld world;
    world.notices.will_answer(Answer::ok, Milliseconds{60000});
    world.act([&] { world.copy().ports.notices.box({.text = "Read me"}); });
    EXPECT_EQ(world.state().notices.notices.size(), 1u);
}

TEST(NoticeList, WindowsTonesAndTheMainWindowArePassedOnUnlisted) {
    StartedWorld world;
    Notices& notices = world.copy().ports.notices;
    notices.show_window("NimbrySensor");
    notices.restore_main_window();
    notices.beep();
    EXPECT_EQ(world.notices.windows, std::vector<std::string>{"NimbrySensor"});
    EXPECT_EQ(world.notices.restored, 1);
    EXPECT_EQ(world.notices.beeps, 1);
    EXPECT_TRUE(world.state().notices.notices.empty());
}

}  // namespace
}  // namespace nimbry::test
