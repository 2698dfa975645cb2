#include <gtest/gtest.h>

#include "engine/displays/box_list.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

class UnitsReload : public testing::Test {
protected:
    UnitsReload() : days(at(10, 5, 14, 0)) {
        days.world.files.add_folder("/local");
        days.start();
        days.trains(at(10, 5, 14, 0), at(10, 5, 14, 0, 10), warm());
    }
    static StationReadings warm() {
        StationReadings readings;
        readings.temperature.outdoor = 18;
        readings.rain.rate_mm = 6;
        return readings;
    }
    // Somebody chooses US units; the next train reloads.
    void choose_us_units(const StationReadings& readings = {}) {
        WeatherState& state = days.world.state();
        state.settings.fTempF = state.settings.fBarinhg = state.settings.fRainin = state.settings.fWindmph = true;
        state.units = units_from(state.settings);
        state.records.unitschanged = true;
        days.train(at(10, 5, 14, 0, 20), readings);
    }
    std::string text(const char* file) { return days.world.files.contents(file); }
    WeatherDays days;
};

// The usual 12.3 degrees C come after 18; 1013 hPa; gust 4.2 m/s; 6 mm/h.
TEST_F(UnitsReload, ShowsTheKeptRecordsInTheNewUnitsOnce) {
    choose_us_units();
    const WeatherState& state = days.world.state();
    EXPECT_EQ(state.panel.TxtTempMax.text, "+64.4 \260F at 14:00");
    EXPECT_EQ(state.panel.TxtTempMin.text, "+54.1 \260F at 14:00");
    EXPECT_EQ(state.panel.TxtBarMax.text, " 29.91 In.Hg at 14:00");
    EXPECT_EQ(state.panel.TxtGustMax.text, " 9.4 MPH, 225\xB0 at 14:00");
    EXPECT_EQ(state.panel.TxtRainMax.text, " 0.24 In./hour at 14:00");
    EXPECT_EQ(state.additional.txtMnthTotal.text, "0 In.");
    EXPECT_EQ(state.records.day.maxtemp, 18.0F);
    EXPECT_FALSE(state.records.unitschanged);
    EXPECT_FALSE(state.records.doingreset);
}

TEST_F(UnitsReload, NoBoxKeepsAnOldUnit) {
    // The minute's tick fills the boxes of the last hour.
    days.trains(at(10, 5, 14, 0, 30), at(10, 5, 14, 0, 50), warm());
    StationReadings wet = warm();
    wet.rain.total_mm = 125;
    days.trains(at(10, 5, 14, 1, 0), at(10, 5, 14, 1, 50), wet);
    const WeatherState& state = days.world.state();
    ASSERT_EQ(state.panel.TxtRainLH.text, " 2 mm");
    ASSERT_EQ(state.panel.TxtWindGLH.text, "15.1 km/h");
    choose_us_units(wet);
    EXPECT_EQ(state.panel.TxtRainLH.text, " 0.08 In.");
    EXPECT_EQ(state.panel.TxtWindGLH.text, "") << "its samples have gone with the graphs";
    for (const NamedConstBox& named : named_boxes(state)) {
        if (named.kind != BoxKind::reading) continue;
        for (const std::string& text : {named.box->text, named.box->tip, named.box->balloon})
            for (const char* old : {"\260C", "km/h", "mB", " mm"})
                EXPECT_EQ(text.find(old), std::string::npos) << named.name << ": " << text;
    }
}

TEST_F(UnitsReload, SavesTheDayBeforeItReadsItBack) {
    EXPECT_FALSE(days.world.files.exists("nimbrTDay.log"));
    choose_us_units();
    const auto lines = days.world.lines("nimbrTDay.log");
    ASSERT_EQ(lines.size(), 33U);
    EXPECT_EQ(lines[0], "05 Oct 2026 14:00:30");
    EXPECT_EQ(lines[1], "18");
}

TEST_F(UnitsReload, ADayThatCannotBeSavedIsKeptAllTheSame) {
    // No gust yet: the day is in no file, and an older day's file must not take its place.
    WeatherState& state = days.world.state();
    state.records.day.maxwind = -999;
    StationReadings windless;
    windless.wind.fault_bits = 8;
    std::string old = "05 Oct 2026 10:00:00\r\n";
    for (int n = 2; n <= 33; ++n) old += "1\r\n";
    days.world.files.put("nimbrTDay.log", old);
    state.records.DaySinceRain = 4;
    choose_us_units(windless);
    EXPECT_EQ(state.records.day.maxtemp, 18.0F);
    EXPECT_EQ(state.records.DaySinceRain, 4);
    EXPECT_EQ(state.additional.txtDSR.text, "4");
    EXPECT_EQ(text("nimbrTDay.log"), old);
}

TEST_F(UnitsReload, YesterdayIsShownAfresh) {
    std::string yesterday = "05 Oct 2026 08:58:52\r\n";
    for (const char* line :
         {"12.3",  "14:05", "-4.7",  "06:40", "100",   "07:00",   "54",    "15:10", "12",  "03:30", "1019",
          "08:00", "1003",  "20:00", "21.4",  "16:20", "225\xB0", "7",     "116",   "9.8", "13:00", "-6.1",
          "06:41", "22.5",  "18:00", "17.9",  "07:10", "-11.2",   "06:50", "-999",  ""})
        yesterday.append(line).append("\r\n");
    days.world.files.put("nimbrYDay.log", yesterday);
    choose_us_units();
    const WeatherState& state = days.world.state();
    EXPECT_EQ(state.panel.TxtYTempMin.text, "+23.5 \260F at 06:40");
    EXPECT_EQ(state.panel.TxtRainYest.text, " 0.28 In.");  // 7 mm
    EXPECT_EQ(state.records.day.maxtemp, 18.0F);
}

TEST_F(UnitsReload, PutsColumnsAndUnitsIntoALogThatIsThereAlsoWhileLoggingIsOff) {
    days.world.files.put("nimbry.dat", "rows\r\n");
    days.world.files.put("/local/nimbry.dat", "twin\r\n");
    days.world.state().publish.NimbryFTPSetup.chkLocal = true;
    days.world.state().publish.NimbryFTPSetup.txtLocalPath = "/local";
    choose_us_units();
    const std::string lines =
        "DATE,MONTH,TIME,TEMPERATURE,HUMIDITY,DEWPOINT,WINDCHILL,HEAT INDEX,WIND SPEED,WIND DIRECTION,GUST SPEED,"
        "GUST DIRECTION,BAROMETER,TREND,RAIN RATE,RAIN TOTAL,INDOOR TEMPERATURE,INDOOR HUMIDITY\r\n"
        ",,, \260F,%, \260F, \260F, \260F,MPH,\xB0,MPH,\xB0,In.Hg,,In. /hour,In., \260F,%\r\n";
    EXPECT_EQ(text("nimbry.dat"), "rows\r\n" + lines);
    EXPECT_EQ(text("/local/nimbry.dat"), "twin\r\n" + lines);
}

TEST_F(UnitsReload, MakesNoLogAndNoTwin) {
    days.world.state().publish.NimbryFTPSetup.chkLocal = true;
    days.world.state().publish.NimbryFTPSetup.txtLocalPath = "/local";
    choose_us_units();
    EXPECT_FALSE(days.world.files.exists("nimbry.dat"));
    EXPECT_FALSE(days.world.files.exists("/local/nimbry.dat"));
}

TEST_F(UnitsReload, DeletesTheStoredGraphs) {
    days.world.files.put("grafdata.dat", "samples\r\n");
    choose_us_units();
    EXPECT_FALSE(days.world.files.exists("grafdata.dat"));
}

// At 09:00:00 the file is more than ten seconds before 09:00:01 only if it is older; at 09:01:10 the change is past.
TEST_F(UnitsReload, MakesUpForNoChangeover) {
    WeatherState& state = days.world.state();
    state.records.day.maxwind = -999;  // so that the old file stays as it is
    StationReadings windless;
    windless.wind.fault_bits = 8;
    std::string old = "05 Oct 2026 08:00:00\r\n";
    for (int n = 2; n <= 33; ++n) old += "1\r\n";
    days.world.files.put("nimbrTDay.log", old);
    choose_us_units(windless);
    EXPECT_EQ(days.changeovers(), 0);
    EXPECT_TRUE(days.rows().empty());
}

TEST_F(UnitsReload, LeavesTheRainOfTheDayAsItIs) {
    StationReadings wet;
    wet.rain.total_mm = 125;
    days.train(at(10, 5, 14, 0, 15), wet);
    EXPECT_EQ(days.world.state().rain.raintoday, 2.0F);
    choose_us_units(wet);
    EXPECT_EQ(days.world.state().rain.raintoday, 2.0F);
    EXPECT_EQ(days.world.panel().TxtRainToday.text, " 0.08 In.");
}

}  // namespace
}  // namespace nimbry
