#include <cmath>
#include <vector>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

class GroupAF : public Decoding {};

struct PressureCase {
    const char* what;
    int hpa;
    const char *mb, *hectopascal, *inches;
};

TEST_F(GroupAF, ShowsTheBarometerInItsUnit) {
    for (const PressureCase& c : {
             PressureCase{"an ordinary reading", 1013, " 1013 mB", " 1013 hPa", " 29.91 In.Hg"},
             PressureCase{"the lowest sound one", 796, " 796 mB", " 796 hPa", " 23.5 In.Hg"},
             PressureCase{"the highest sound one", 1049, " 1049 mB", " 1049 hPa", " 30.98 In.Hg"},
         }) {
        SCOPED_TRACE(c.what);
        station.barometer.hpa = c.hpa;
        use(BarometerUnit::mb);
        train();
        EXPECT_EQ(panel.Text2[4].text, c.mb);
        use(BarometerUnit::hpa);
        train();
        EXPECT_EQ(panel.Text2[4].text, c.hectopascal);
        use(BarometerUnit::inhg);
        train();
        EXPECT_EQ(panel.Text2[4].text, c.inches);
        EXPECT_EQ(readings.BaroValue, c.hpa);
        EXPECT_EQ(readings.BaroInvariant, std::to_string(c.hpa));
    }
}

TEST_F(GroupAF, TheLogHasTheBarometerWithoutItsUnit) {
    use(BarometerUnit::inhg);
    train();
    EXPECT_EQ(state.log_fields.logbaro, "29.91");
}

TEST_F(GroupAF, TheBarometersDigitsCountOnlyInTheirPlaces) {
    train();
    for (const int unused : {8, 11}) {
        SCOPED_TRACE(unused);
        train_with(0xAF, unused, 7);
        EXPECT_EQ(panel.Text2[4].text, " 1013 mB");
    }
    train_with(0xAF, 7, 9);  // the units
    EXPECT_EQ(panel.Text2[4].text, " 1019 mB");
    train_with(0xAF, 10, 4);  // the tens
    EXPECT_EQ(panel.Text2[4].text, " 1043 mB");
}

struct TrendCase {
    const char* what;
    int digit;
    const char *word, *code;
};

TEST_F(GroupAF, TellsTheTrendAndKeepsItForAnUnknownDigit) {
    for (const TrendCase& c : {
             TrendCase{"rising", 1, "Rising", "2"},
             TrendCase{"an unknown digit leaves it", 0, "Rising", "2"},
             TrendCase{"steady", 2, "Steady", "1"},
             TrendCase{"3 is none", 3, "Steady", "1"},
             TrendCase{"falling", 4, "Falling", "0"},
             TrendCase{"8 is none", 8, "Falling", "0"},
             TrendCase{"nor is F", 15, "Falling", "0"},
         }) {
        SCOPED_TRACE(c.what);
        station.barometer.trend = c.digit;
        train();
        EXPECT_EQ(panel.TxtBarTrend.text, c.word);
        EXPECT_EQ(readings.BaroTrendCode, c.code);
        EXPECT_EQ(state.log_fields.logbtrend, c.word);
    }
}

TEST_F(GroupAF, AFaultyBarometerKeepsTrendAndPressure) {
    train();
    station.barometer = {.hpa = 1050, .trend = 4, .outlook = 2};
    train();
    EXPECT_EQ(panel.Text2[4].text, " 1013 mB");
    EXPECT_EQ(panel.TxtBarTrend.text, "Steady");
    EXPECT_EQ(readings.BaroValue, 1013);
    train();
    EXPECT_EQ(panel.Text2[4].text, "Error");
    EXPECT_EQ(panel.TxtBarTrend.text, "Steady");
    EXPECT_EQ(panel.TxtForecast.text, "Cloudy") << "the forecast needs no barometer";
}

// Dew point, wet bulb, depression and cloud base; worked out in Python from the formulas of the derived room.

struct DewCase {
    const char* what;
    double celsius;
    int humidity;
    bool over_range;
    const char *dew_c, *dew_f, *bulb_c, *bulb_f, *depression_c, *depression_f, *cloud;
};

TEST_F(GroupAF, ShowsDewPointWetBulbDepressionAndCloudBase) {
    const std::string c_unit = " \260C";
    const std::string f_unit = " \260F";
    for (const DewCase& c : {
             DewCase{"an ordinary day", 12.3, 54, false, "+3.3", "+37.9", "+8.3", "+46.9", "+4", "+7.2",
                     "1125 meters. (3690 feet)"},
             DewCase{"a dew point below 0", 8.1, 54, false, "-0.6", "+30.9", "+4.7", "+40.5", "+3.4", "+6.1",
                     "1087 meters. (3567 feet)"},
             DewCase{"frost", -4.7, 80, false, "-7.6", "+18.3", "-5.5", "+22.1", "+0.8", "+1.4",
                     "362 meters. (1188 feet)"},
             DewCase{"a dew point that rounds to 0 keeps its minus", 9.9, 50, false, "-0", "+32", "+6", "+42.8", "+3.9",
                     "+7", "1237 meters. (4058 feet)"},
             DewCase{"0 degrees Fahrenheit has a plus", -17.2, 95, false, "-17.8", "+0", "-17.3", "+0.9", "+0.1",
                     "+0.2", "75 meters. (246 feet)"},
             DewCase{"97 is 97", 30, 97, false, "+29.5", "+85.1", "+29.6", "+85.3", "+0.4", "+0.7",
                     "62 meters. (205 feet)"},
             DewCase{"97 over range is 100", 30, 97, true, "+30", "+86", "+30", "+86", "+0", "+0",
                     "0 meters. (0 feet)"},
             DewCase{"the driest reading", 25, 1, false, "-34.8", "-30.6", "+22.3", "+72.1", "+2.7", "+4.9",
                     "7475 meters. (24518 feet)"},
         }) {
        SCOPED_TRACE(c.what);
        station.temperature.outdoor = c.celsius;
        station.humidity.outdoor = c.humidity;
        station.humidity.outdoor_over_range = c.over_range;
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.Text2[1].text, c.dew_c + c_unit);
        EXPECT_EQ(state.additional.txtWetBulb.text, c.bulb_c + c_unit);
        EXPECT_EQ(state.additional.txtWBDep.text, c.depression_c + c_unit);
        EXPECT_EQ(state.additional.txtCloudBase.text, c.cloud);
        EXPECT_EQ(state.log_fields.logdew, c.dew_c);
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.Text2[1].text, c.dew_f + f_unit);
        EXPECT_EQ(state.additional.txtWetBulb.text, c.bulb_f + f_unit);
        EXPECT_EQ(state.additional.txtWBDep.text, c.depression_f + f_unit);
        EXPECT_EQ(state.additional.txtCloudBase.text, c.cloud);
        EXPECT_EQ(state.log_fields.logdew, c.dew_f);
        EXPECT_EQ(readings.DewInvariant, c.dew_c) << "metric, whatever is shown";
        EXPECT_EQ(readings.WetBulbInvariant, c.bulb_c);
    }
}

TEST_F(GroupAF, BeforeAPressureHasBeenReadThereIsNoWetBulb) {
    station.barometer.hpa = 1050;
    train();
    EXPECT_EQ(panel.Text2[1].text, "+3.3 \260C");
    EXPECT_EQ(state.additional.txtCloudBase.text, "1125 meters. (3690 feet)");
    EXPECT_EQ(state.additional.txtWetBulb.text, "");
    EXPECT_EQ(state.additional.txtWBDep.text, "");
    EXPECT_EQ(readings.WetBulbInvariant, "");
    station.barometer.hpa = 1013;
    train();
    EXPECT_EQ(state.additional.txtWetBulb.text, "+8.3 \260C");
    station.barometer.hpa = 1050;
    station.temperature.outdoor = 8.1;
    train();
    EXPECT_EQ(state.additional.txtWetBulb.text, "+4.7 \260C") << "the last pressure stands";
}

TEST_F(GroupAF, KeepsTheDewPointAsANumberInCelsius) {
    use(TemperatureUnit::fahrenheit);
    train();
    EXPECT_DOUBLE_EQ(readings.dewnative, 3.3);
    EXPECT_NEAR(readings.Evap, 7.7167595852, 1e-9);
    station.temperature.outdoor = 9.9;
    station.humidity.outdoor = 50;
    train();
    EXPECT_EQ(readings.dewnative, 0);
    EXPECT_FALSE(std::signbit(readings.dewnative)) << "the sign is in the text alone";
}

TEST_F(GroupAF, DewPointNeedsBothSensors) {
    train();
    station.temperature.outdoor = 20;
    for (bool* fault : {&station.humidity.outdoor_fault, &station.temperature.outdoor_fault}) {
        *fault = true;
        train();
        train();
        EXPECT_EQ(panel.Text2[1].text, "+3.3 \260C") << "the last value stands";
        EXPECT_EQ(state.additional.txtWetBulb.text, "+8.3 \260C");
        EXPECT_EQ(state.additional.txtCloudBase.text, "1125 meters. (3690 feet)");
        *fault = false;
        station.temperature.outdoor = 12.3;
        train();
        station.temperature.outdoor = 20;
    }
    train();
    EXPECT_EQ(panel.Text2[1].text, "+10.4 \260C");
}

TEST_F(GroupAF, HumidityZeroEndsTheProgramUnderItsTag) {
    station.humidity.outdoor = 0;
    try {
        train();
        ADD_FAILURE() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.number, ErrorNumber::invalid_argument);
        EXPECT_EQ(error.tag, "AF group");
    }
}

TEST_F(GroupAF, AHumidityThatIsNoNumberIsNotZero) {
    train();
    for (const int value : {10, 11, 12, 13, 15}) {
        SCOPED_TRACE(value);
        EXPECT_NO_THROW(train_with(0x8F, 41, value));
        EXPECT_EQ(panel.Text2[1].text, "+3.3 \260C");
    }
    station.humidity.outdoor = 3;
    for (int value = 10; value <= 15; ++value) {
        SCOPED_TRACE(value);
        EXPECT_NO_THROW(train_with(0x8F, 42, value));
        EXPECT_EQ(panel.Text2[1].text, "+3.3 \260C") << "the last value stands";
    }
}

// The weather picture.

struct PictureCase {
    const char* what;
    int outlook, trend;
    double celsius;
    Box MainPanel::*picture;
    const char* word;
};

TEST_F(GroupAF, ShowsOneWeatherPictureAndItsWord) {
    const std::vector<Box MainPanel::*> pictures{&MainPanel::PicSunny, &MainPanel::PicCloudy, &MainPanel::PicPartly,
                                                 &MainPanel::PicRain,  &MainPanel::PicSnow,   &MainPanel::PicStorm};
    for (const PictureCase& c : {
             PictureCase{"sunny", 1, 2, 12.3, &MainPanel::PicSunny, "Sunny"},
             PictureCase{"cloudy", 2, 2, 12.3, &MainPanel::PicCloudy, "Cloudy"},
             PictureCase{"partly cloudy", 4, 2, 12.3, &MainPanel::PicPartly, "Partly Cloudy"},
             PictureCase{"an unknown digit leaves the last picture", 3, 4, -5, &MainPanel::PicPartly, "Partly Cloudy"},
             PictureCase{"0 too", 0, 2, 12.3, &MainPanel::PicPartly, "Partly Cloudy"},
             PictureCase{"and F", 15, 2, 12.3, &MainPanel::PicPartly, "Partly Cloudy"},
             PictureCase{"rain", 8, 2, 12.3, &MainPanel::PicRain, "Rain"},
             PictureCase{"rain just above the snow limit", 8, 1, 1.1, &MainPanel::PicRain, "Rain"},
             PictureCase{"snow at the limit", 8, 1, 1.0, &MainPanel::PicSnow, "Snow/Sleet"},
             PictureCase{"snow in frost", 8, 2, -4.7, &MainPanel::PicSnow, "Snow/Sleet"},
             PictureCase{"a falling barometer makes a storm", 8, 4, 12.3, &MainPanel::PicStorm, "Storm"},
             PictureCase{"also in frost", 8, 4, -4.7, &MainPanel::PicStorm, "Storm"},
             PictureCase{"but not of another forecast", 2, 4, -4.7, &MainPanel::PicCloudy, "Cloudy"},
         }) {
        SCOPED_TRACE(c.what);
        station.barometer.outlook = c.outlook;
        station.barometer.trend = c.trend;
        station.temperature.outdoor = c.celsius;
        train();
        for (const auto picture : pictures) EXPECT_EQ((panel.*picture).visible, picture == c.picture);
        EXPECT_EQ(panel.TxtForecast.text, c.word);
    }
}

TEST_F(GroupAF, AFaultyBarometersTrendStillMakesAStorm) {
    station.barometer = {.hpa = 1050, .trend = 4, .outlook = 8};
    train();
    EXPECT_EQ(panel.TxtForecast.text, "Storm");
    EXPECT_NE(panel.TxtBarTrend.text, "Falling") << "the word itself needs a sound barometer";
}

TEST_F(GroupAF, SnowNeedsASoundTemperature) {
    station.temperature.outdoor = -4.7;
    train();
    station.temperature.outdoor_fault = true;
    station.barometer.outlook = 8;
    train();
    EXPECT_EQ(panel.TxtForecast.text, "Rain");
}

TEST_F(GroupAF, NothingIsShownBeforeTheSecondTrain) {
    BareCopy fresh;
    fresh.train(station);
    EXPECT_FALSE(fresh.state.panel.PicSunny.visible);
    EXPECT_EQ(fresh.state.panel.Text2[4].text, "");
    EXPECT_EQ(fresh.state.panel.Text2[1].text, "") << "no dew point either";
    fresh.train(station);
    EXPECT_TRUE(fresh.state.panel.PicSunny.visible);
}

}  // namespace
}  // namespace nimbry::test
