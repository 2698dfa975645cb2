#include "engine/displays/marquee.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/displays/big_display.h"
#include "engine/displays/box_list.h"
#include "engine/displays/main_panel.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

struct ItemCase {
    const char *key, *check_box;
    const char *label, *value;
};

/// A state in which every source of the line holds a text of its own.
void fill(WeatherState& state) {
    reset_main_panel(state);
    state.panel.TxtHeatInd.text = " +31 \260C ";
    state.panel.Text2[1].text = "+9.3";
    state.panel.TxtWindChill.text = "-4";
    state.panel.TxtRainToday.text = " 3 mm";
    state.panel.TxtRainTot.text = " 827 mm";
    state.panel.Text2[8].text = "+21.4";
    state.panel.Text2[9].text = "48 %";
    state.panel.TxtRainLH.text = " 1 mm";
    state.sun.numwebsunrise = "06:09:12";
    state.sun.websunrise = "at 06:09:12";
    state.sun.numwebsunset = "18:30:01";
    state.sun.websunset = "at 18:30:01";
    state.panel.TxtWindGLH.text = " 31.3 km/h";
}

const ItemCase item_cases[]{
    {"DisHI", "chkHI", "Heat Index", "+31 \260C"},
    {"DisDew", "chkDew", "Dew Point", "+9.3"},
    {"DisChill", "chkChill", "Wind Chill", "-4"},
    {"DisRain", "chkRain", "Rainfall Since 9.00am ", "3 mm"},
    {"DisRainTot", "chkRainTot", "Total Rainfall", "827 mm"},
    {"DisInTemp", "chkInTemp", "Indoor Temp.", "+21.4"},
    {"DisInHum", "chkInHum", "Indoor Humidity", "48 %"},
    {"DisRainLH", "chkRainLH", "Rainfall in last hour", "1 mm"},
    {"DisSunrise", "chkSunrise", "Sunrise", "06:09:12"},
    {"DisSunset", "chkSunset", "Sunset", "18:30:01"},
    {"DisWindGLH", "chkWindGLH", "Maximum wind gust in last hour", "31.3 km/h"},
};

TEST(MarqueeItems, HaveTheirKeysAndCheckBoxesInTheLinesOrder) {
    ASSERT_EQ(marquee_items().size(), std::size(item_cases));
    MarqueeDialog dialog;
    const std::vector<DialogControl> controls = dialog_controls(dialog);
    ASSERT_EQ(controls.size(), std::size(item_cases));
    for (std::size_t n = 0; n < std::size(item_cases); ++n) {
        SCOPED_TRACE(item_cases[n].key);
        const MarqueeItem& item = marquee_items()[n];
        EXPECT_EQ(item.key, item_cases[n].key);
        EXPECT_EQ(item.check_box, item_cases[n].check_box);
        EXPECT_EQ(controls[n].name, item_cases[n].check_box);
        EXPECT_EQ(std::get<bool*>(controls[n].value), &(dialog.*item.ticked));
        EXPECT_FALSE(dialog.*item.ticked) << "off by default";
    }
}

TEST(Marquee, ShowsEachItemWithItsLabelAndItsTrimmedValue) {
    for (std::size_t n = 0; n < std::size(item_cases); ++n) {
        SCOPED_TRACE(item_cases[n].key);
        WeatherState state;
        fill(state);
        state.big.FrmMarquee.*marquee_items()[n].ticked = true;
        turn_marquee(state);
        EXPECT_EQ(state.big.Label9.text, item_cases[n].label);
        EXPECT_EQ(state.big.Label10.text, item_cases[n].value);
        EXPECT_EQ(state.big.DisCount, static_cast<int>(n) + 1);
        EXPECT_TRUE(state.big.ValidItems);
    }
}

struct ChangeoverCase {
    const char* label;
    bool midnight, one_hour;
};

TEST(Marquee, NamesTheChangeoverInForceBesideTheRain) {
    for (const ChangeoverCase& c : {ChangeoverCase{"Rainfall Since midnight ", true, false},
                                    {"Rainfall Since 9.00am ", false, false},
                                    {"Rainfall Since 10.00am ", false, true}}) {
        WeatherState state;
        state.settings.tmidnight = c.midnight;
        state.settings.AddOneHour = c.one_hour;
        state.big.FrmMarquee.chkRain = true;
        turn_marquee(state);
        EXPECT_EQ(state.big.Label9.text, c.label);
    }
}

TEST(Marquee, GoesFromTickedToTickedAndFromTheLastToTheFirst) {
    WeatherState state;
    fill(state);
    state.big.FrmMarquee.chkDew = state.big.FrmMarquee.chkInHum = state.big.FrmMarquee.chkWindGLH = true;
    EXPECT_EQ(state.big.DisCount, 0);
    std::vector<int> shown;
    for (int n = 0; n < 5; ++n) {
        turn_marquee(state);
        shown.push_back(state.big.DisCount);
    }
    EXPECT_EQ(shown, (std::vector<int>{2, 7, 11, 2, 7}));
    state.big.FrmMarquee = {};
    state.big.FrmMarquee.chkHI = state.big.FrmMarquee.chkSunset = true;
    turn_marquee(state);
    EXPECT_EQ(state.big.DisCount, 10) << "on from where it was";
}

TEST(Marquee, ASingleItemStaysAndIsShownAfresh) {
    WeatherState state;
    fill(state);
    state.big.FrmMarquee.chkInHum = true;
    turn_marquee(state);
    state.panel.Text2[9].text = "49 %";
    EXPECT_EQ(state.big.Label10.text, "48 %");
    turn_marquee(state);
    EXPECT_EQ(state.big.DisCount, 7);
    EXPECT_EQ(state.big.Label10.text, "49 %");
}

TEST(Marquee, WithoutAnItemItNamesTheProgram) {
    WeatherState state;
    fill(state);
    state.big.FrmMarquee.chkInHum = true;
    turn_marquee(state);
    state.big.FrmMarquee = {};
    turn_marquee(state);
    EXPECT_FALSE(state.big.ValidItems);
    EXPECT_EQ(state.big.Label9.text, "**  Nimbry  **");
    EXPECT_EQ(state.big.Label10.text, "");
    EXPECT_EQ(state.big.DisCount, 7) << "the position stays";
}

TEST(MarqueeSettings, AreReadAtTheStart) {
    World world;
    world.files.put("Nimbry.ini", main_section() + "[Marquee]\r\nDisDew=True\r\nDisSunset=true\r\n");
    world.start();
    MarqueeDialog expected;
    expected.chkDew = true;  // "true" is not "True"
    EXPECT_EQ(world.state().big.FrmMarquee, expected);
}

TEST(MarqueeSettings, TheFirstKeyIsReadAndWrittenInEitherSpelling) {
    World world;
    world.files.put("Nimbry.ini", main_section() + "[Marquee]\r\nDisHi=True\r\n");
    world.start();
    EXPECT_TRUE(world.state().big.FrmMarquee.chkHI);
    accept_marquee(world.copy(), {});
    const std::string text = world.files.contents("Nimbry.ini");
    EXPECT_NE(text.find("DisHi=False\r\n"), std::string::npos) << "the file's own spelling stays";
    EXPECT_EQ(text.find("DisHI"), std::string::npos);
}

TEST(MarqueeSettings, AcceptingClicksStoresAllElevenAndTakesThemIntoForce) {
    StartedWorld world;
    MarqueeDialog values;
    values.chkChill = values.chkWindGLH = true;
    accept_marquee(world.copy(), values);
    EXPECT_EQ(world.sounds.played, (std::vector<std::string>{"click.WAV"}));
    EXPECT_EQ(world.state().big.FrmMarquee, values);
    for (const ItemCase& item : item_cases) {
        const std::string key = item.key;
        EXPECT_EQ(world.setting("Marquee", key), key == "DisChill" || key == "DisWindGLH" ? "True" : "False") << key;
    }
}

class BigDisplayOpen : public testing::Test {
protected:
    void open() {
        world.act([this] { mnuBIG(world.copy()); });
    }
    BigDisplay& big() { return world.state().big; }

    StartedWorld world;
};

TEST_F(BigDisplayOpen, TurnsItsLineAtOnceAndThenEveryFourSeconds) {
    big().FrmMarquee.chkDew = big().FrmMarquee.chkChill = true;
    EXPECT_EQ(big().Label9.text, "");
    open();
    EXPECT_TRUE(big().open);
    EXPECT_EQ(big().Label9.text, "Dew Point");
    world.run_for(3999ms);
    EXPECT_EQ(big().Label9.text, "Dew Point");
    world.run_for(1ms);
    EXPECT_EQ(big().Label9.text, "Wind Chill");
    world.run_for(4s);
    EXPECT_EQ(big().Label9.text, "Dew Point");
}

TEST_F(BigDisplayOpen, StandsStillWhileItIsClosed) {
    big().FrmMarquee.chkDew = big().FrmMarquee.chkChill = true;
    open();
    big_display_closed(world.copy());
    EXPECT_FALSE(big().open);
    world.run_for(60s);
    EXPECT_EQ(big().Label9.text, "Dew Point");
    open();
    EXPECT_EQ(big().Label9.text, "Wind Chill");
}

TEST_F(BigDisplayOpen, AClickOnAnOpenOneSoundsAndChangesNothing) {
    big().FrmMarquee.chkDew = big().FrmMarquee.chkChill = true;
    open();
    world.run_for(2s);
    open();
    EXPECT_EQ(world.sounds.played, (std::vector<std::string>{"click.WAV", "click.WAV"}));
    EXPECT_EQ(big().Label9.text, "Dew Point");
    world.run_for(2s);
    EXPECT_EQ(big().Label9.text, "Wind Chill") << "its four seconds are those of the first click";
}

struct MirrorCase {
    const char *name, *of;
};

TEST(BigDisplay, ShowsTheReadingsOfTheMainWindow) {
    World world;
    world.start();
    world.send_trains(2);
    WeatherState& state = world.state();
    find_box(state, "Text2(6)")->back = colours::alarm_back;
    for (const MirrorCase& c : {MirrorCase{"txtDisTemp", "Text2(0)"},
                                {"txtDisHum", "Text2(2)"},
                                {"txtDisWGS", "Text2(6)"},
                                {"txtDisWGD", "Text2(7)"},
                                {"txtWAS", "Text2(3)"},
                                {"txtWAD", "TxtWinDir"},
                                {"txtDisBar", "Text2(4)"},
                                {"txtDisBarTrend", "TxtBarTrend"}}) {
        SCOPED_TRACE(c.name);
        ASSERT_NE(find_box(state, c.name), nullptr);
        EXPECT_EQ(*find_box(state, c.name), *find_box(state, c.of)) << "text and colours";
        EXPECT_NE(find_box(state, c.name)->text, "");
    }
    EXPECT_EQ(find_box(state, "txtDisTimDat")->text, "14:00:12  Oct  5");
}

}  // namespace
}  // namespace nimbry::test
