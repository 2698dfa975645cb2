#include "engine/records/load_extremes.h"

#include <gtest/gtest.h>

#include "engine/core/run_time_error.h"
#include "engine/records/day_files.h"
#include "engine/records/extremes_texts.h"
#include "engine/records/save_extremes.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

DayExtremes some_day() {
    DayExtremes d;
    d.maxtemp = 18, d.maxtemptime = "13:00";
    d.mintemp = 2, d.mintemptime = "05:00";
    d.maxhum = 90, d.maxhumtime = "05:10";
    d.minhum = 40, d.minhumtime = "13:10";
    d.maxrain = 0, d.maxraintime = "00:00";
    d.maxbar = 1020, d.maxbartime = "08:00";
    d.minbar = 1010, d.minbartime = "12:00";
    d.maxwind = 8, d.maxwindtime = "11:00", d.maxwindir = "45\xB0";
    return d;
}
std::string today(CivilTime stamp) {
    return today_text(stamp, {some_day(), 3, 6, 2.5F});
}
std::string yesterday(CivilTime stamp) {
    return yesterday_text(stamp, {some_day(), 7, 116});
}

// A copy that has had its first train, at 14:00 of 5 October; the files are read at the second.
class LoadExtremes : public testing::Test {
protected:
    LoadExtremes() : days(at(10, 5, 14, 0)) {
        days.start();
        days.train(at(10, 5, 14, 0));
    }
    void second_train(const StationReadings& readings = {}) { days.train(at(10, 5, 14, 0, 10), readings); }
    WeatherState& state() { return days.world.state(); }
    WeatherDays days;
};

TEST_F(LoadExtremes, BothFilesAreReadAndShown) {
    days.world.files.put("nimbrYDay.log", yesterday(at(10, 5, 8, 58, 50)));
    days.world.files.put("nimbrTDay.log", today(at(10, 5, 13, 50)));
    second_train();
    EXPECT_TRUE(state().run.YFileOK);
    EXPECT_TRUE(state().records.TFileOK);
    EXPECT_EQ(state().panel.TxtYTempMax.text, "+18 \260C at 13:00");
    EXPECT_EQ(state().panel.TxtRainYest.text, " 7 mm");
    EXPECT_EQ(state().panel.TxtTempMin.text, "+2 \260C at 05:00");
    EXPECT_EQ(state().records.DaySinceRain, 6);
    EXPECT_EQ(state().records.LastRain, 2.5F);
    EXPECT_EQ(state().additional.txtDSR.text, "6");
    EXPECT_EQ(state().additional.txtAmtLastRain.text, "2.5 mm");
    // 123 now, 116 at the changeover: line 20 of yesterday's file, not line 19 of today's.
    EXPECT_EQ(state().rain.rainatchange, 116.0F);
    EXPECT_EQ(state().rain.raintoday, 7.0F);
    EXPECT_FALSE(state().run.firstrun);
    EXPECT_FALSE(state().records.doingreset);
}

TEST_F(LoadExtremes, WithoutYesterdaysFileTheDaysRainComesFromTodays) {
    days.world.files.put("nimbrTDay.log", today(at(10, 5, 13, 50)));
    second_train();
    EXPECT_EQ(state().rain.raintoday, 3.0F);
    EXPECT_EQ(state().rain.rainatchange, 120.0F);
    for (const Box* box :
         {&state().panel.TxtYTempMax, &state().panel.TxtYTempMin, &state().panel.TxtYHumMax, &state().panel.TxtYHumMin,
          &state().panel.TxtYGustMax, &state().panel.TxtYRainMax, &state().panel.TxtYBarMax, &state().panel.TxtYBarMin,
          &state().additional.txtYMaxDew, &state().additional.txtYMinDew, &state().additional.txtYMinWC,
          &state().additional.txtYMaxHI, &state().additional.txtYMaxInTemp, &state().additional.txtYMinInTemp})
        EXPECT_EQ(box->text, "- No Data Available -");
    EXPECT_EQ(state().panel.TxtRainYest.text, " -- ");
}

TEST_F(LoadExtremes, AStaleFileOfYesterdayIsAsGoodAsNoneAndEmptiesTheDate) {
    days.world.files.put("nimbrYDay.log", yesterday(at(10, 4, 8, 58, 50)));
    days.world.files.put("nimbrTDay.log", today(at(10, 5, 13, 50)));
    second_train();
    EXPECT_FALSE(state().run.YFileOK);
    EXPECT_TRUE(state().records.YFileBad);
    EXPECT_EQ(state().panel.TxtYTempMax.text, "- No Data Available -");
    EXPECT_EQ(state().panel.TxtRainYest.text, " -- ");
    EXPECT_EQ(state().log_fields.logdate, "");
    EXPECT_EQ(state().rain.raintoday, 3.0F);
    days.train(at(10, 5, 14, 0, 20));
    EXPECT_EQ(state().log_fields.logdate, "5");
}

TEST_F(LoadExtremes, WithoutTodaysFileTheDayStartsAfresh) {
    days.world.files.put("nimbrYDay.log", yesterday(at(10, 5, 8, 58, 50)));
    second_train();
    EXPECT_EQ(state().rain.rainatchange, 116.0F);
    EXPECT_EQ(state().rain.raintoday, 7.0F);
    EXPECT_EQ(state().records.day.maxtemp, 12.3F);
    EXPECT_EQ(state().records.day.maxhi, -999);
    // The times of yesterday, which was read into the same fields, stand until they are overwritten.
    EXPECT_EQ(state().records.day.maxtemptime, "14:00");
    EXPECT_EQ(state().additional.txtMaxHI.text, "- No Valid Data -");
    EXPECT_EQ(state().additional.txtDSR.text, "0");
    EXPECT_EQ(state().additional.txtAmtLastRain.text, "0");
    EXPECT_EQ(state().panel.TxtYTempMax.text, "+18 \260C at 13:00");
}

TEST_F(LoadExtremes, AStaleFileOfTodayIsThrownAwayWithoutARow) {
    days.world.files.put("nimbrTDay.log", today(at(10, 4, 8, 30)));
    second_train();
    EXPECT_FALSE(state().records.TFileOK);
    EXPECT_EQ(state().records.day.maxtemp, 12.3F);
    EXPECT_EQ(state().records.DaySinceRain, 0);
    EXPECT_EQ(days.changeovers(), 0);
    EXPECT_TRUE(days.rows().empty());
}

TEST_F(LoadExtremes, TodaysBlankBoxesFillWithTheirOwnReadings) {
    StationReadings faulty;
    faulty.wind.fault_bits = 8;
    faulty.rain.fault = true;
    second_train(faulty);
    EXPECT_EQ(state().panel.TxtGustMax.text, "");
    EXPECT_EQ(state().panel.TxtRainMax.text, "");
    EXPECT_EQ(state().panel.TxtHumMax.text, "54 % at 14:00");
}

TEST_F(LoadExtremes, TodaysFileIsWrittenInPlaceAndTheMarkFalls) {
    second_train();
    days.world.files.forget_calls();
    SaveExtremes(days.world.copy());
    ASSERT_EQ(days.world.files.calls().size(), 1U);
    EXPECT_EQ(days.world.files.calls()[0].operation, "rewrite");
    EXPECT_EQ(days.world.files.calls()[0].name, "nimbrTDay.log");
    EXPECT_FALSE(state().run.tdaysaving);
}

TEST_F(LoadExtremes, WithoutADateNothingIsWrittenAndTheMarkFalls) {
    second_train();
    state().log_fields.logdate.clear();
    SaveExtremes(days.world.copy());
    EXPECT_FALSE(days.world.files.exists("nimbrTDay.log"));
    EXPECT_FALSE(state().run.tdaysaving);
}

TEST_F(LoadExtremes, AFailedSaveLetsTheMarkFallToo) {
    second_train();
    days.world.files.refuse("nimbrTDay.log", FileResult::disk_full);
    EXPECT_THROW(SaveExtremes(days.world.copy()), RunTimeError);
    EXPECT_FALSE(state().run.tdaysaving);
}

TEST(ExtremesTexts, TurnAtTheirLimits) {
    MainSettings ms;
    ms.fWindms = true;
    const Units units = units_from(ms);
    EXPECT_EQ(gust_record(0.2F, "5\xB0", "16:20", units), " 0.2 m/S, 5\xB0 at 16:20");
    EXPECT_EQ(gust_record(0.1F, "5\xB0", "16:20", units), "Calm");
    EXPECT_EQ(gust_record(-999, "", "", units), "- No Valid Data -");
    EXPECT_EQ(rain_rate_record(-999, "", units), "- No Valid Data -");
    EXPECT_EQ(rain_rate_record(0.004F, "03:30", units), " nil");
    EXPECT_EQ(rain_rate_record(0.006F, "03:30", units), " 0.01 mm/hour at 03:30");
    EXPECT_EQ(humidity_record(-999, -999, ""), "- No Valid Data -");
    EXPECT_EQ(humidity_record(999, 999, ""), "- No Valid Data -");
    EXPECT_EQ(barometer_record(9999, 9999, "", units), "- No Valid Data -");
    // Only the record's own reset value counts.
    EXPECT_EQ(barometer_record(999, 9999, "08:00", units), " 999 mB at 08:00");
    EXPECT_EQ(temperature_record(0, 999, "08:00", units), "+0 \260C at 08:00");
}

}  // namespace
}  // namespace nimbry
