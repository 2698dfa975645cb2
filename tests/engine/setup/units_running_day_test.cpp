#include <gtest/gtest.h>

#include "engine/setup/units_dialog.h"
#include "tests/engine/records/weather_days.h"
#include "tests/world/started_world.h"

namespace nimbry {
namespace {

using test::at;
using test::WeatherDays;
using test::World;

/// Ten minutes of a day that is logged every minute, with an almanac of earlier days, graphs, and records of today and
/// yesterday; then somebody turns to US units.
class UnitsInARunningDay : public testing::Test {
protected:
    UnitsInARunningDay() : world(at(10, 5, 14, 0)) {
        world.files.put("Nimbry.ini", test::main_section("fwrtlog=True\r\nLogMin=1\r\n"));
        world.files.put("nimbrYDay.log", yesterday());
        world.files.put("nbextreme.log", almanac);
        world.start();
        world.send_trains(30, warm());
        world.send_trains(31);
    }
    static StationReadings warm() {
        StationReadings readings;
        readings.temperature.outdoor = 18;
        return readings;
    }
    static std::string yesterday() {
        std::string text = "05 Oct 2026 08:58:52\r\n";
        for (const char* line :
             {"12.3",  "14:05", "-4.7",  "06:40", "100",   "07:00",   "54",    "15:10", "12",  "03:30", "1019",
              "08:00", "1003",  "20:00", "21.4",  "16:20", "225\xB0", "7",     "116",   "9.8", "13:00", "-6.1",
              "06:41", "22.5",  "18:00", "17.9",  "07:10", "-11.2",   "06:50", "-999",  ""})
            text.append(line).append("\r\n");
        return text;
    }
    /// The accept button with every unit turned, as the window does it.
    void turn_to_us_units() {
        UnitsDialog dialog = units_dialog(world.state().settings);
        dialog.optTempC = dialog.optBarmb = dialog.optRainmm = dialog.optWindkph = false;
        dialog.optTempF = dialog.optBarinhg = dialog.optRainin = dialog.optWindmph = true;
        world.act([&] { accept_units(world.copy(), dialog); });
    }
    std::vector<std::string> log() { return world.lines("nimbry.dat"); }

    static constexpr const char* almanac = "a heading\r\n04 Oct 2026, a row\r\n";
    World world;
};

TEST_F(UnitsInARunningDay, WarnsOfTheLogAndOfTheAlmanac) {
    EXPECT_EQ(units_warnings(world.copy()).size(), 2U);
}

TEST_F(UnitsInARunningDay, KeepsEveryRecordAndShowsItAfreshWithTheNextTrain) {
    WeatherState& state = world.state();
    ASSERT_EQ(state.records.day.maxtemp, 18.0F);
    ASSERT_EQ(state.panel.TxtYTempMax.text, "+12.3 \260C at 14:05");
    ASSERT_GE(state.graphs.rows.windsamples(), 8);
    ASSERT_TRUE(world.files.exists("grafdata.dat"));
    const std::size_t rows_before = log().size();
    ASSERT_GE(rows_before, 8U);

    turn_to_us_units();
    EXPECT_TRUE(state.records.unitschanged);
    EXPECT_EQ(log().size(), rows_before) << "the cycle does it, not the click";
    world.send_trains(1);

    EXPECT_FALSE(state.records.unitschanged);
    EXPECT_EQ(state.records.day.maxtemp, 18.0F) << "records are metric";
    EXPECT_EQ(state.panel.TxtTempMax.text.substr(0, 8), "+64.4 \260F");
    EXPECT_EQ(state.panel.TxtYTempMax.text, "+54.1 \260F at 14:05");
    EXPECT_EQ(state.panel.TxtYTempMin.text, "+23.5 \260F at 06:40");
    EXPECT_EQ(state.panel.TxtRainYest.text, " 0.28 In.");
    EXPECT_EQ(state.panel.Text2[0].text, "+54.1 \260F");
    EXPECT_EQ(state.panel.lblGaugeMax.text, "30") << "the gust bar in MPH";
}

TEST_F(UnitsInARunningDay, TheLogGetsASecondLineOfUnitsAndGoesOnInThem) {
    turn_to_us_units();
    world.send_trains(12);
    std::vector<std::string> units;
    std::string last_row;
    for (const std::string& line : log()) {
        if (line.starts_with(",,,")) units.push_back(line);
        last_row = line;
    }
    ASSERT_EQ(units.size(), 2U);
    EXPECT_TRUE(units[0].starts_with(",,, \260C,%")) << units[0];
    EXPECT_TRUE(units[1].starts_with(",,, \260F,%")) << units[1];
    EXPECT_NE(last_row.find("54.1"), std::string::npos) << last_row;
}

TEST_F(UnitsInARunningDay, TheGraphsStartAfreshAndTheAlmanacStaysAsItIs) {
    turn_to_us_units();
    world.send_trains(1);
    const WeatherState& state = world.state();
    EXPECT_EQ(state.graphs.rows.windsamples(), 0);
    EXPECT_FALSE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(state.panel.gLabel12.text, "Temperature \260F");
    world.send_trains(18);
    EXPECT_EQ(state.graphs.rows.windsamples(), 3) << "a sample a minute again";
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
    EXPECT_EQ(world.files.contents("nbextreme.log"), almanac);
}

TEST_F(UnitsInARunningDay, ARestartShowsTheSameDayInTheNewUnits) {
    turn_to_us_units();
    world.send_trains(6);
    world.act([&] { world.engine.menu_exit(); });
    ASSERT_TRUE(world.engine.gone());

    WeatherDays later(at(10, 5, 14, 12));
    later.inherit(world);
    later.start();
    later.trains(at(10, 5, 14, 12), at(10, 5, 14, 12, 20));
    const MainPanel& panel = later.world.panel();
    EXPECT_EQ(panel.TxtTempMax.text, world.panel().TxtTempMax.text);
    EXPECT_EQ(panel.TxtYTempMax.text, "+54.1 \260F at 14:05");
}

}  // namespace
}  // namespace nimbry
