#include "engine/setup/rain_days_dialog.h"

#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "engine/records/day_files.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

class RainDaysEditor : public testing::Test {
protected:
    RainDaysEditor() {
        records.DaySinceRain = 7;
        records.LastRain = 1.5F;
        world.state.additional.txtDSR.text = "7";
        world.state.additional.txtAmtLastRain.text = "1.5 mm";
    }

    void accept(const std::string& days, const std::string& amount) { accept_rain_days(world.copy, {days, amount}); }

    /// A day that can be saved: a date, and a reading of each record.
    void have_a_day() {
        world.state.log_fields.logdate = "5";
        world.state.readings.dtvar = civil_time({2026, 10, 5, 14, 0, 0});
        DayExtremes& day = records.day;
        day.maxtemp = day.mintemp = 12;
        day.maxhum = day.minhum = 50;
        day.maxrain = day.maxwind = 0;
        day.maxbar = day.minbar = 1013;
    }

    BareCopy world;
    RecordsState& records = world.state.records;
};

TEST_F(RainDaysEditor, OpensWithWhatIsKnown) {
    EXPECT_EQ(rain_days_dialog(records), (RainDaysDialog{"7", "1.5"}));
}

struct Case {
    const char* law;
    const char *days, *amount;
    int stored_days;
    float stored_amount;
    const char *shown_days, *shown_amount;
};

const Case cases[]{
    {"whole numbers", "12", "3", 12, 3, "12", "3 mm"},
    {"a half goes to the even day below", "2.5", "0", 2, 0, "2", "0 mm"},
    {"or above", "3.5", "0", 4, 0, "4", "0 mm"},
    {"more than a half goes up", "2.51", "0", 3, 0, "3", "0 mm"},
    {"a comma is a point", "1,6", "2,54", 2, 2.54F, "2", "2.54 mm"},
    {"blanks around", " 9 ", " 4 ", 9, 4, "9", "4 mm"},
    {"an amount that is none is 0", "5", "much", 5, 0, "5", "0 mm"},
    {"an empty amount is 0", "5", "", 5, 0, "5", "0 mm"},
    {"an amount that no single holds is 0", "5", "1e300", 5, 0, "5", "0 mm"},
    {"more days than there are", "1e30", "1", 2147483647, 1, "2147483647", "1 mm"},
};

TEST_F(RainDaysEditor, StoresAndShowsANumberOfDaysWithItsAmount) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        accept(c.days, c.amount);
        EXPECT_EQ(records.DaySinceRain, c.stored_days);
        EXPECT_EQ(records.LastRain, c.stored_amount);
        EXPECT_EQ(world.state.additional.txtDSR.text, c.shown_days);
        EXPECT_EQ(world.state.additional.txtAmtLastRain.text, c.shown_amount);
    }
    EXPECT_EQ(world.sounds.played, std::vector<std::string>(std::size(cases), "click.WAV"));
}

TEST_F(RainDaysEditor, ShowsTheAmountInTheUnitInForceWithoutTurningIt) {
    world.state.settings.fRainin = true;
    world.state.units = units_from(world.state.settings);
    accept("1", "3");
    EXPECT_EQ(records.LastRain, 3.0F);
    EXPECT_EQ(world.state.additional.txtAmtLastRain.text, "3 In.");
}

TEST_F(RainDaysEditor, ChangesNothingForDaysThatAreNoNumber) {
    have_a_day();
    for (const char* days : {"", " ", "two", "1.2.3", "3 days"}) {
        SCOPED_TRACE(days);
        accept(days, "9");
        EXPECT_EQ(records.DaySinceRain, 7);
        EXPECT_EQ(records.LastRain, 1.5F);
        EXPECT_EQ(world.state.additional.txtDSR.text, "7");
        EXPECT_EQ(world.state.additional.txtAmtLastRain.text, "1.5 mm");
        EXPECT_FALSE(world.files.exists("nimbrTDay.log"));
    }
    EXPECT_EQ(world.sounds.played.size(), 5U) << "the click sounds all the same";
}

TEST_F(RainDaysEditor, SavesTheExtremesOfTheDay) {
    have_a_day();
    accept("12", "2.5");
    const TodayRecord saved = read_today(world.files.contents("nimbrTDay.log"));
    EXPECT_EQ(saved.DaySinceRain, 12);
    EXPECT_EQ(saved.LastRain, 2.5F);
    EXPECT_FALSE(world.state.run.tdaysaving) << "the save has given its flag back";
}

TEST_F(RainDaysEditor, LeavesADayWithoutReadingsUnsaved) {
    accept("12", "2.5");
    EXPECT_EQ(records.DaySinceRain, 12);
    EXPECT_FALSE(world.files.exists("nimbrTDay.log"));
    EXPECT_FALSE(world.state.run.tdaysaving);
}

TEST_F(RainDaysEditor, HasItsControlsUnderTheirNames) {
    RainDaysDialog dialog{"1", "2"};
    const auto controls = dialog_controls(dialog);
    ASSERT_EQ(controls.size(), 2U);
    EXPECT_EQ(controls[0].name, "txtEDSR");
    EXPECT_EQ(*std::get<std::string*>(controls[0].value), "1");
    EXPECT_EQ(controls[1].name, "txtALR");
    EXPECT_EQ(*std::get<std::string*>(controls[1].value), "2");
}

}  // namespace
}  // namespace nimbry::test
