#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

class GroupBF : public Decoding {};

struct RateCase {
    const char* what;
    int mm;
    const char *in_mm, *in_inches;
};

TEST_F(GroupBF, ShowsTheRainRateInItsUnit) {
    for (const RateCase& c : {
             RateCase{"dry", 0, "0", "0"},
             RateCase{"drizzle", 2, "2", "0.08"},
             RateCase{"heavy rain", 50, "50", "1.97"},
             RateCase{"three decimal digits", 999, "999", "39.33"},
             RateCase{"the highest value: the first digit is hexadecimal", 1599, "1599", "62.95"},
         }) {
        SCOPED_TRACE(c.what);
        station.rain.rate_mm = c.mm;
        use(RainUnit::mm);
        train();
        EXPECT_EQ(panel.TxtPeakRain().text, " " + std::string(c.in_mm) + " mm/hour");
        EXPECT_EQ(panel.TxtPeakRain().balloon, "Peak rainfall Rate " + std::string(c.in_mm) + " mm/Hr.");
        EXPECT_EQ(state.log_fields.lograinr, c.in_mm);
        use(RainUnit::inches);
        train();
        EXPECT_EQ(panel.TxtPeakRain().text, " " + std::string(c.in_inches) + " In./hour");
        EXPECT_EQ(panel.TxtPeakRain().balloon, "Peak rainfall Rate " + std::string(c.in_inches) + " In./Hr.");
        EXPECT_EQ(state.log_fields.lograinr, c.in_inches);
        EXPECT_EQ(readings.RainRateMm, c.mm) << "state is metric";
    }
}

TEST_F(GroupBF, ShowsTheCounterAndSinceWhenItRuns) {
    station.rain.total_mm = 123;
    train();
    EXPECT_EQ(panel.TxtRainTot.text, " 123 mm");
    EXPECT_EQ(panel.TxtRainTot.balloon, "The total accumulated rainfall since 09:30 on April 5 is 123 mm");
    EXPECT_EQ(readings.RainTotalText, "123");
    EXPECT_EQ(readings.RainSinceText, "123 mm of rain since April 5");
    EXPECT_EQ(state.log_fields.lograintot, "123");
    use(RainUnit::inches);
    train();
    EXPECT_EQ(panel.TxtRainTot.text, " 4.84 In.");
    EXPECT_EQ(panel.TxtRainTot.balloon, "The total accumulated rainfall since 09:30 on April 5 is 4.84 In.");
    EXPECT_EQ(readings.RainTotalText, "123");
    EXPECT_EQ(readings.RainSinceText, "4.84 In. of rain since April 5");
    EXPECT_EQ(state.log_fields.lograintot, "4.84");
}

TEST_F(GroupBF, TheCounterRunsFromZeroToFourNines) {
    station.rain.total_mm = 0;
    train();
    EXPECT_EQ(panel.TxtRainTot.text, " 0 mm");
    EXPECT_EQ(readings.RainTotalText, "0");
    station.rain.total_mm = 9999;
    train();
    EXPECT_EQ(panel.TxtRainTot.text, " 9999 mm");
}

TEST_F(GroupBF, AResetMonthThatIsNoneLeavesTheDaysDigits) {
    for (const int month : {0, 13, 15}) {
        SCOPED_TRACE(month);
        train_with(0xBF, 22, month);
        EXPECT_EQ(readings.RainSinceText, "123 mm of rain since 05");
    }
    train_with(0xBF, 22, 12);
    EXPECT_EQ(readings.RainSinceText, "123 mm of rain since December 5");
}

TEST_F(GroupBF, AFaultKeepsTheRateAndStillUpdatesTheCounter) {
    station.rain.rate_mm = 2;
    train();
    station.rain = {.rate_mm = 9, .total_mm = 130, .fault = true};
    train();
    EXPECT_EQ(panel.TxtPeakRain().text, " 2 mm/hour");
    EXPECT_EQ(panel.TxtRainTot.text, " 130 mm");
    EXPECT_EQ(readings.RainTotalText, "130");
    station.rain.total_mm = 131;
    train();
    EXPECT_EQ(panel.TxtPeakRain().text, "Error");
    EXPECT_EQ(panel.TxtRainTot.text, " 131 mm");
    EXPECT_EQ(readings.RainRateMm, 2);
}

TEST_F(GroupBF, NothingIsShownBeforeTheSecondTrain) {
    BareCopy fresh;
    fresh.train(station);
    EXPECT_EQ(fresh.state.panel.TxtRainTot.text, "");
    EXPECT_EQ(fresh.state.readings.RainTotalText, "");
}

}  // namespace
}  // namespace nimbry::test
