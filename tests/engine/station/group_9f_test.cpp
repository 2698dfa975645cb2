#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

class Group9F : public Decoding {};

struct TemperatureCase {
    const char* what;
    double celsius;
    const char *in_celsius, *in_fahrenheit;
};

// Fahrenheit: the value times 9 / 5 plus 32, to one decimal, and then the sign.
const TemperatureCase temperatures[] = {
    {"above zero", 12.3, "+12.3", "+54.1"},
    {"a leading zero is not shown", 8.1, "+8.1", "+46.6"},
    {"a whole degree", 18.0, "+18", "+64.4"},
    {"plus zero", 0.0, "+0", "+32"},
    {"minus zero keeps the station's sign", -0.0, "-0", "+32"},
    {"below zero in Celsius alone", -4.7, "-4.7", "+23.5"},
    {"the last value above zero Fahrenheit", -17.7, "-17.7", "+0.1"},
    {"what rounds to zero Fahrenheit has a plus", -17.8, "-17.8", "+0"},
    {"below zero in both", -18.0, "-18", "-0.4"},
    {"the lowest digits", -79.9, "-79.9", "-111.8"},
    {"the highest digits", 79.9, "+79.9", "+175.8"},
};

TEST_F(Group9F, ShowsTheOutdoorTemperatureWithItsSignAndUnit) {
    for (const TemperatureCase& c : temperatures) {
        SCOPED_TRACE(c.what);
        station.temperature.outdoor = c.celsius;
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.Text2[0].text, std::string(c.in_celsius) + " \260C");
        EXPECT_EQ(panel.Text2[0].balloon, "Temperature " + std::string(c.in_celsius) + " \260C");
        EXPECT_EQ(state.log_fields.logostemp, c.in_celsius);
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.Text2[0].text, std::string(c.in_fahrenheit) + " \260F");
        EXPECT_EQ(panel.Text2[0].balloon, "Temperature " + std::string(c.in_fahrenheit) + " \260F");
        EXPECT_EQ(state.log_fields.logostemp, c.in_fahrenheit);
    }
}

TEST_F(Group9F, ShowsTheIndoorTemperatureTheSameWay) {
    for (const TemperatureCase& c : temperatures) {
        SCOPED_TRACE(c.what);
        station.temperature.indoor = c.celsius;
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.Text2[8].text, std::string(c.in_celsius) + " \260C");
        EXPECT_EQ(panel.Text2[8].balloon, "Indoor Temperature " + std::string(c.in_celsius) + " \260C");
        EXPECT_EQ(state.log_fields.logintemp, c.in_celsius);
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.Text2[8].text, std::string(c.in_fahrenheit) + " \260F");
        EXPECT_EQ(state.log_fields.logintemp, c.in_fahrenheit);
    }
}

TEST_F(Group9F, KeepsTheMetricTextsAsDigitsWithTheirSign) {
    use(TemperatureUnit::fahrenheit);
    station.temperature.outdoor = -4.7;
    station.temperature.indoor = 8.1;
    train();
    EXPECT_EQ(readings.rawostemp, "-04.7");
    EXPECT_EQ(readings.rawintemp, "+08.1");
}

TEST_F(Group9F, ShowsTheStationsTemperatureRecords) {
    station.temperature.high = 38.4;
    station.temperature.low = -12.6;
    train();
    EXPECT_EQ(panel.TxtOShi.text, "+38.4 \260C at 14:55 on 17  Feb");
    EXPECT_EQ(panel.TxtOSLo.text, "-12.6 \260C at 05:11 on 09  Jul");
    use(TemperatureUnit::fahrenheit);
    train();
    EXPECT_EQ(panel.TxtOShi.text, "+101.1 \260F at 14:55 on 17  Feb");
    EXPECT_EQ(panel.TxtOSLo.text, "+9.3 \260F at 05:11 on 09  Jul");
}

TEST_F(Group9F, ARecordOfMinusZeroIsShownSoAndAMonthThatIsNoneIsLeftOut) {
    station.temperature.high = -0.0;
    train_with(0x9F, 46, 0);
    EXPECT_EQ(panel.TxtOShi.text, "-0 \260C at 14:55 on 17  ");
    train_with(0x9F, 56, 13);
    EXPECT_EQ(panel.TxtOSLo.text, "-12.6 \260C at 05:11 on 09  ");
}

TEST_F(Group9F, AFaultySensorLeavesTheReadingAndStillShowsTheRecords) {
    train();
    station.temperature.outdoor_fault = true;
    station.temperature.high = 40.1;
    train();
    EXPECT_EQ(panel.Text2[0].text, "+12.3 \260C");
    EXPECT_EQ(readings.rawostemp, "+12.3");
    EXPECT_EQ(panel.TxtOShi.text, "+40.1 \260C at 14:55 on 17  Feb");
}

TEST_F(Group9F, AFaultOfOneSensorDoesNotTouchTheOther) {
    station.temperature.outdoor_fault = true;
    station.temperature.indoor = 19.5;
    train();
    EXPECT_EQ(panel.Text2[8].text, "+19.5 \260C");
    station.temperature.outdoor_fault = false;
    station.temperature.indoor_fault = true;
    station.temperature.outdoor = 3.3;
    train();
    EXPECT_EQ(panel.Text2[0].text, "+3.3 \260C");
    EXPECT_EQ(panel.Text2[8].text, "+19.5 \260C");
}

TEST_F(Group9F, ADigitAboveNineEndsTheNumber) {
    station.temperature.outdoor = 12.3;
    train_with(0x9F, 34, 11);
    EXPECT_EQ(panel.Text2[0].text, "+12 \260C");
    train_with(0x9F, 33, 13);
    EXPECT_EQ(panel.Text2[0].text, "+1 \260C");
}

TEST_F(Group9F, NothingIsShownBeforeTheSecondTrain) {
    BareCopy fresh;
    fresh.train(station);
    for (const Box* box : {&fresh.state.panel.Text2[0], &fresh.state.panel.Text2[8], &fresh.state.panel.TxtOShi,
                           &fresh.state.panel.TxtOSLo, &fresh.state.panel.TxtHeatInd})
        EXPECT_EQ(box->text, "");
    EXPECT_EQ(fresh.state.readings.rawostemp, "");
}

// The heat index.

struct HeatCase {
    const char* what;
    double celsius;
    int humidity;
    const char *in_celsius, *in_fahrenheit, *metric;
};

TEST_F(Group9F, ShowsTheHeatIndexFromTwentyDegreesOn) {
    for (const HeatCase& c : {
             HeatCase{"the last temperature without one", 19.9, 50, "n.a.", "n.a.", ""},
             HeatCase{"the first with one", 20.0, 50, "+24.3", "+75.8", "+24.3"},
             HeatCase{"a dangerous day", 35.0, 80, "+54.7", "+130.4", "+54.7"},
             HeatCase{"dry air", 20.0, 1, "+16.4", "+61.5", "+16.4"},
             HeatCase{"frost", -4.7, 50, "n.a.", "n.a.", ""},
         }) {
        SCOPED_TRACE(c.what);
        station.temperature.outdoor = c.celsius;
        station.humidity.outdoor = c.humidity;
        const bool has_unit = !std::string(c.metric).empty();
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.TxtHeatInd.text, std::string(c.in_celsius) + (has_unit ? " \260C" : ""));
        EXPECT_EQ(panel.TxtHeatInd.balloon, "Heat Index " + panel.TxtHeatInd.text);
        EXPECT_EQ(state.log_fields.loghind, c.in_celsius);
        EXPECT_EQ(readings.HeatInvariant, c.metric);
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.TxtHeatInd.text, std::string(c.in_fahrenheit) + (has_unit ? " \260F" : ""));
        EXPECT_EQ(state.log_fields.loghind, c.in_fahrenheit);
        EXPECT_EQ(readings.HeatInvariant, c.metric);
    }
}

TEST_F(Group9F, TheHeatIndexTakesAnOverRangeHumidityAsItReads) {
    station.temperature.outdoor = 30;
    station.humidity.outdoor = 97;
    station.humidity.outdoor_over_range = true;
    train();
    EXPECT_EQ(panel.TxtHeatInd.text, "+42.2 \260C");
    EXPECT_DOUBLE_EQ(readings.hinative, 42.2);
}

TEST_F(Group9F, WithoutAHumidityTheHeatIndexStaysAsItIs) {
    station.temperature.outdoor = 30;
    train();
    const std::string before = panel.TxtHeatInd.text;
    station.humidity.outdoor_fault = true;
    station.temperature.outdoor = 35;
    train();
    train();
    EXPECT_EQ(panel.TxtHeatInd.text, before);
    station.temperature.outdoor = 19.9;
    train();
    EXPECT_EQ(panel.TxtHeatInd.text, "n.a.");
}

}  // namespace
}  // namespace nimbry::test
