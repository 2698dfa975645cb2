#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "engine/records/almanac.h"
#include "engine/records/extremes_texts.h"
#include "engine/records/load_extremes.h"
#include "engine/records/save_extremes.h"
#include "tests/world/world.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::World;

CivilTime at(int day, int hour, int minute, int second = 0) {
    return *civil_time({2026, 10, day, hour, minute, second});
}

struct Copies {
    explicit Copies(CivilTime start = at(5, 14, 0)) : world(start), station(start) {
        world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
        world.start();
    }
    // The next train, a minute of the station's clock later.
    void train(const StationReadings& readings = {}) {
        world.clock.set_computer_time(station);
        world.send_train(readings, station);
        station += 1min;
    }
    const DayExtremes& day() { return world.state().records.day; }
    World world;
    CivilTime station;
};

TEST(Extremes, TheFirstTrainOnlyPrimesAndTheSecondCounts) {
    Copies copies;
    copies.train();
    EXPECT_EQ(copies.day().maxtemp, -999);
    copies.train();
    EXPECT_EQ(copies.day().maxtemp, 12.3F);
    EXPECT_EQ(copies.day().maxtemptime, "14:01");
    EXPECT_EQ(copies.world.panel().TxtTempMax.text, "+12.3 \260C at 14:01");
}

TEST(Extremes, OnAnEqualValueTheTimeMovesButForThePeakRainRate) {
    Copies copies;
    StationReadings readings;
    readings.rain.rate_mm = 6;
    for (int n = 0; n < 3; ++n) copies.train(readings);
    const DayExtremes& day = copies.day();
    for (const std::string* time :
         {&day.maxtemptime, &day.mintemptime, &day.maxhumtime, &day.minhumtime, &day.maxbartime, &day.minbartime,
          &day.maxwindtime, &day.maxdewtime, &day.mindewtime, &day.maxintemptime, &day.minintemptime, &day.minwctime})
        EXPECT_EQ(*time, "14:02");
    EXPECT_EQ(day.maxraintime, "14:01");
    readings.wind.gust_direction = 45;
    copies.train(readings);
    EXPECT_EQ(day.maxwindir, "45\xB0");
}

TEST(Extremes, AFaultyHumidityCostsDewHeatAndChillAndNothingElse) {
    Copies copies;
    copies.train();
    StationReadings readings;
    readings.humidity.outdoor_fault = true;
    for (int n = 0; n < 2; ++n) copies.train(readings);
    const DayExtremes& day = copies.day();
    EXPECT_EQ(day.maxdew, -999);
    EXPECT_EQ(day.minwc, 999);
    EXPECT_EQ(day.maxhum, -999);
    EXPECT_EQ(day.maxtemp, 12.3F);
    EXPECT_EQ(day.maxwind, 4.2F);
    EXPECT_EQ(day.maxbar, 1013);
    EXPECT_EQ(day.maxintemp, 21.5F);
}

TEST(Extremes, AFaultyWindCostsTheChillOnly) {
    Copies copies;
    copies.train();
    StationReadings readings;
    readings.wind.fault_bits = 8;
    copies.train(readings);
    EXPECT_EQ(copies.day().minwc, 999);
    EXPECT_EQ(copies.day().maxwind, -999);
    EXPECT_EQ(copies.day().maxdew, 3.3F);
}

TEST(Extremes, HeatIndexHasARecordOnlyFromTwentyDegreesOn) {
    Copies copies;
    copies.train();
    copies.train();
    EXPECT_EQ(copies.day().maxhi, -999);
    StationReadings warm;
    warm.temperature.outdoor = 20.0;
    warm.humidity.outdoor = 50;
    copies.train(warm);
    EXPECT_FLOAT_EQ(copies.day().maxhi, 24.3F);  // 75.8 degrees F
}

TEST(Extremes, TodayIsSavedEveryThirtiethCycleTenSecondsAhead) {
    Copies copies;
    for (int n = 0; n < 29; ++n) copies.train();
    EXPECT_FALSE(copies.world.files.exists("nimbrTDay.log"));
    copies.train();
    const auto lines = copies.world.lines("nimbrTDay.log");
    ASSERT_EQ(lines.size(), 33U);
    EXPECT_EQ(lines[0], "05 Oct 2026 14:29:10");
    EXPECT_EQ(lines[1], "12.3");
}

TEST(Extremes, ADayWithADeadSensorIsNeverSaved) {
    Copies copies;
    StationReadings readings;
    readings.wind.fault_bits = 8;
    for (int n = 0; n < 31; ++n) copies.train(readings);
    EXPECT_FALSE(copies.world.files.exists("nimbrTDay.log"));
    EXPECT_FALSE(copies.world.state().run.tdaysaving);
}

TEST(Extremes, TheStampMayRollTheDay) {
    Copies copies(at(5, 23, 59, 55));
    copies.train();
    copies.station = at(5, 23, 59, 55);
    copies.train();
    SaveExtremes(copies.world.copy());
    EXPECT_EQ(copies.world.lines("nimbrTDay.log")[0], "06 Oct 2026 00:00:05");
}

// A copy that starts with the files of another.
void inherit(World& from, World& to, const std::string& name) {
    if (from.files.exists(name)) to.files.put(name, from.files.contents(name));
}

TEST(Extremes, ARestartReadsTheDayBack) {
    Copies first;
    StationReadings cold;
    cold.temperature.outdoor = -4.7;
    first.train();
    first.train(cold);
    SaveExtremes(first.world.copy());
    Copies second(at(5, 15, 0));
    inherit(first.world, second.world, "nimbrTDay.log");
    second.train();
    second.train();
    EXPECT_EQ(second.day().mintemp, -4.7F);
    EXPECT_EQ(second.day().mintemptime, "14:01");
    EXPECT_EQ(second.world.panel().TxtTempMin.text, "-4.7 \260C at 14:01");
    EXPECT_EQ(second.world.panel().TxtYTempMax.text, "- No Data Available -");
    EXPECT_EQ(second.world.panel().TxtRainYest.text, " -- ");
}

struct AgeCase {
    const char* name;
    std::chrono::seconds age;
    bool today_kept, yesterday_kept;
};

TEST(Extremes, AFileOfADayAgoIsDroppedToTheSecond) {
    const AgeCase cases[] = {
        {"a second younger", 86379s, true, true},
        {"exactly", 86380s, true, false},
        {"a second older", 86381s, false, false},
        {"from the future", -60s, true, true},
    };
    Copies source;
    source.train();
    source.train();
    SaveExtremes(source.world.copy());
    const std::string bytes = source.world.files.contents("nimbrTDay.log");
    const std::string body = bytes.substr(bytes.find("\r\n"));
    for (const AgeCase& c : cases) {
        SCOPED_TRACE(c.name);
        // Read on the second train, at 00:31 of a day with a midnight changeover far behind: no changeover is made up
        // for.
        Copies copies(at(6, 23, 30));
        copies.world.state().settings.tmidnight = true;
        copies.train();
        const std::string stamp = stamp_text(copies.station - c.age);
        copies.world.files.put("nimbrTDay.log", stamp + body);
        std::string yesterday = stamp + body;
        yesterday.resize(yesterday.size() - 3);  // the last line, "0"
        copies.world.files.put("nimbrYDay.log", yesterday);
        copies.train();
        EXPECT_EQ(copies.world.state().records.TFileOK, c.today_kept);
        EXPECT_EQ(copies.world.state().run.YFileOK, c.yesterday_kept);
    }
}

TEST(Extremes, AShortFileEndsTheProgramWithItsOwnBox) {
    Copies copies;
    copies.train();
    copies.world.files.put("nimbrTDay.log", stamp_text(copies.station) + "\r\n12.3\r\n");
    copies.train();
    copies.world.run_for(5s);
    ASSERT_EQ(copies.world.notices.boxes.size(), 1U);
    EXPECT_EQ(copies.world.notices.boxes[0].what.text,
              "There is a problem with your extremes data file(s) (nimbrTday.log or nimbrYday.log).\r\n"
              "The file(s) may be corrupt or from an earlier version of Nimbry.\r\n"
              "The program cannot continue.");
    EXPECT_TRUE(copies.world.engine.gone());
    EXPECT_EQ(copies.world.engine.exit_status(), 1);
}

TEST(Extremes, AnotherDamageCostsOneStepAndTheRecordGoesOn) {
    Copies copies;
    copies.train();
    copies.world.files.put("nimbrYDay.log", "rubbish\r\n");
    copies.train();
    copies.world.run_for(5s);
    EXPECT_FALSE(copies.world.engine.gone());
    EXPECT_EQ(copies.day().maxtemp, 12.3F);
    EXPECT_FALSE(copies.world.state().run.DuplicateError);
}

TEST(ExtremesTexts, AreInTheUnitsOfDisplay) {
    MainSettings us;
    us.fTempF = us.fBarinhg = us.fRainin = us.fWindmph = true;
    const Units units = units_from(us), metric = units_from({});
    EXPECT_EQ(temperature_record(-4.7F, 999, "06:40", metric), "-4.7 \260C at 06:40");
    EXPECT_EQ(temperature_record(-4.7F, 999, "06:40", units), "+23.5 \260F at 06:40");
    EXPECT_EQ(temperature_record(-17.8F, 999, "06:40", units), "+0 \260F at 06:40");
    EXPECT_EQ(temperature_record(999, 999, "06:40", units), "- No Valid Data -");
    EXPECT_EQ(temperature_record(-999, -999, "", metric), "- No Valid Data -");
    EXPECT_EQ(humidity_record(97, -999, "07:00"), "97 % at 07:00");
    EXPECT_EQ(rain_rate_record(0, "03:30", metric), " nil");
    EXPECT_EQ(rain_rate_record(12, "03:30", metric), " 12 mm/hour at 03:30");
    EXPECT_EQ(rain_rate_record(12, "03:30", units), " 0.47 In./hour at 03:30");
    EXPECT_EQ(barometer_record(1013, -999, "08:00", units), " 29.91 In.Hg at 08:00");
    EXPECT_EQ(gust_record(4.2F, "45\xB0", "16:20", metric), " 15.1 km/h, 45\xB0 at 16:20");
    EXPECT_EQ(gust_record(0, "45\xB0", "16:20", metric), "Calm");
}

TEST(AlmanacRow, AnUnseenRecordGoesOutAsItsConvertedResetValue) {
    WeatherState state;
    state.settings.fTempF = state.settings.fBarinhg = state.settings.fRainin = true;
    state.units = units_from(state.settings);
    EXPECT_EQ(
        almanac_row(state, "5", "Oct"),
        "5,Oct,-1766.2,,+1830.2,,-999,,999,,-1766.2,,+1830.2,,-1766.2,,+1830.2,,+1830.2,,-999,00:00,-39.33,,-29.5,,"
        "295.26,,0,,,0,0,0\r\n");
}

TEST(AlmanacHead, NamesTheChangeover) {
    const std::string head = almanac_head({});
    EXPECT_EQ(
        head,
        "This is the Nimbry raw almanac file of daily extremes.\r\n\r\nThis file used 9.00am changeover times\r\n"
        "Each entry details the extreme conditions for the 24 hours ENDING at the changeover time on the date shown "
        "for that entry.\r\n\r\n\r\n"
        "DATE,MONTH,MAX TEMPERATURE,MAX TEMP TIME,MIN TEMPERATURE,MIN TEMP TIME,MAX HUMIDITY,MAX HUMIDITY TIME,MIN "
        "HUMIDITY,MIN HUMIDITY TIME,MAX DEWPOINT,MAX DEWPOINT TIME,MIN DEWPOINT,MIN DEWPOINT TIME,MAX INDOOR "
        "TEMP,MAX INDOOR TEMP TIME,MIN INDOOR TEMP,MIN INDOOR TEMP TIME,MIN WIND CHILL, MIN WIND CHILL TIME,MAX "
        "HEAT INDEX,MAX HEAT INDEX TIME,MAX PEAK RAINFALL RATE,MAX PEAK RAINFALL RATE TIME,MAX BAROMETER (SEA),MAX "
        "BAROMETER TIME,MIN BAROMETER (SEA),MIN BAROMETER TIME,MAX WIND (GUST),MAX WIND GUST TIME,MAX WIND GUST "
        "DIRECTION,TOTAL RAINFALL FOR LAST 24 HOURS,DAYS SINCE RAIN,LAST RAIN AMOUNT\r\n\r\n");
}

}  // namespace
}  // namespace nimbry
