#include <gtest/gtest.h>

#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

TEST(OddSettings, AnEmptyFileIsAFirstStart) {
    World world;
    world.files.put("Nimbry.ini", "");
    world.start();
    world.send_trains(3);
    EXPECT_EQ(world.setting("Main", "HasRun"), "True");
    EXPECT_EQ(world.panel().Text2[2].text, "54 %");
    EXPECT_FALSE(world.engine.gone());
}

TEST(OddSettings, AHugeFileIsReadAndKeptWhole) {
    std::string text = "[Mine]\r\n";
    for (int n = 0; n < 20'000; ++n) text += "key" + std::to_string(n) + "=" + std::string(50, 'x') + "\r\n";
    World world;
    world.files.put("Nimbry.ini", text + main_section("LogMin=7\r\n"));
    world.start();
    EXPECT_EQ(world.state().settings.LogMin, 7);
    EXPECT_EQ(world.setting("Mine", "key19999"), std::string(50, 'x'));
    EXPECT_TRUE(world.files.contents("Nimbry.ini").starts_with(text));
}

}  // namespace
}  // namespace nimbry::test
