#include "engine/control/verbs_setup.h"

#include "tests/engine/control/verbs_fixture.h"

namespace nimbry::test {
namespace {

class SetupVerbs : public VerbsTest {
protected:
    [[nodiscard]] std::string place() {
        return world.setting("Main", "Latitude") + " " + world.setting("Main", "Longitude");
    }
};

TEST_F(SetupVerbs, LocationTakesDecimalDegreesWithSouthAndWestNegative) {
    EXPECT_EQ(ask({"location", "-33.8571", "151.2149"}), VerbStatus::done);
    EXPECT_EQ(place(), "-33.857100 151.214900");
    EXPECT_EQ(ask({"location", "+40.7128", "-74.006"}), VerbStatus::done);
    EXPECT_EQ(place(), "40.712800 -74.006000");
    EXPECT_EQ(world.state().settings.Longitude, "-74.006000");
}

TEST_F(SetupVerbs, LocationNoneTakesThePlaceAway) {
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::done);
    EXPECT_EQ(ask({"location", "none"}), VerbStatus::done);
    EXPECT_EQ(place(), "999 999");
}

TEST_F(SetupVerbs, ARefusedLocationIsToldInTheDialogsWordsAndChangesNothing) {
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::done);
    EXPECT_EQ(ask({"location", "91", "0"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Input needs to be between 0 and 90.");
    EXPECT_EQ(ask({"location", "1", "-181"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Input needs to be between 0 and 180.");
    EXPECT_EQ(ask({"location", "--1", "0"}), VerbStatus::failed) << "one sign is enough";
    EXPECT_EQ(ask({"location", "here", "0"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "Input must be numeric.");
    EXPECT_EQ(place(), "1.000000 2.000000");
}

TEST_F(SetupVerbs, LocationNeedsTwoWordsOrNone) {
    for (const Words& words : {Words{"location"}, Words{"location", "1"}, Words{"location", "none", "1", "2"}}) {
        EXPECT_EQ(ask(words), VerbStatus::bad_usage);
        EXPECT_EQ(complaint(), "usage: nimbryctl --dir DIR location LAT LON | none");
    }
}

TEST_F(SetupVerbs, ACopyThatIsFedByAnotherHasThatOnesLocation) {
    world.state().settings.fromnet = true;
    EXPECT_EQ(ask({"location", "1", "2"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "This copy gets its location from the one that gives it its data");
    EXPECT_EQ(world.state().settings.Latitude, "999");
}

}  // namespace
}  // namespace nimbry::test
