#include <cmath>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

// The wind chill, as the wind groups show it.

class WindChillDisplay : public Decoding {};

struct ChillCase {
    const char* what;
    double celsius, average_ms;
    const char *in_celsius, *in_fahrenheit;
};

TEST_F(WindChillDisplay, ShowsTheWindChillByFormula) {
    const std::string c_unit = " \260C";
    const std::string f_unit = " \260F";
    for (const ChillCase& c : {
             ChillCase{"a mild day", 12.3, 3.1, "+11.2", "+52.2"},
             ChillCase{"a whole number", 8.1, 3.4, "+6", "+42.8"},
             ChillCase{"frost", -10, 8.3, "-19.5", "-3.1"},
             ChillCase{"rounds to 0 from below: the sign was taken before", 0.3, 0.8, "-0", "+32"},
             ChillCase{"rounds to 0 from above", 1.3, 1.3, "+0", "+32"},
             ChillCase{"0 degrees Fahrenheit has a plus", -13.0, 2.1, "-17.8", "+0"},
             ChillCase{"calm: the air's own temperature", -10, 0, "-10", "+14"},
             ChillCase{"hot and calm: the formula", 35, 0, "+34.9", "+94.8"},
         }) {
        SCOPED_TRACE(c.what);
        station.temperature.outdoor = c.celsius;
        station.wind.average_ms = c.average_ms;
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.TxtWindChill.text, c.in_celsius + c_unit);
        EXPECT_EQ(panel.TxtWindChill.balloon, "Wind Chill " + (c.in_celsius + c_unit));
        EXPECT_EQ(state.log_fields.logchill, c.in_celsius);
        EXPECT_EQ(readings.ChillInvariant, c.in_celsius);
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.TxtWindChill.text, c.in_fahrenheit + f_unit);
        EXPECT_EQ(state.log_fields.logchill, c.in_fahrenheit);
        EXPECT_EQ(readings.ChillInvariant, c.in_celsius) << "metric, whatever is shown";
    }
}

TEST_F(WindChillDisplay, TheChillIsKeptInCelsiusAndItsZeroIsPlain) {
    use(TemperatureUnit::fahrenheit);
    station.temperature.outdoor = 0.3;
    station.wind.average_ms = 0.8;
    train();
    EXPECT_EQ(readings.chillnative, 0);
    EXPECT_FALSE(std::signbit(readings.chillnative));
    station.temperature.outdoor = 12.3;
    station.wind.average_ms = 3.1;
    train();
    EXPECT_DOUBLE_EQ(readings.chillnative, 11.2);
}

TEST_F(WindChillDisplay, CalmForTheChillIsWhatIsCalmInTheUnitOfDisplay) {
    // At 36 degrees a calm chill is 35.494 by the formula; at 0.36 km/h it is 36 (capped).
    station.temperature.outdoor = 36;
    station.wind.average_ms = 0.1;
    use(WindUnit::ms);
    train();
    EXPECT_EQ(panel.TxtWindChill.text, "+35.5 \260C");
    for (const WindUnit unit : {WindUnit::kph, WindUnit::mph, WindUnit::knots}) {
        SCOPED_TRACE(static_cast<int>(unit));
        use(unit);
        train();
        EXPECT_EQ(panel.TxtWindChill.text, "+36 \260C");
    }
}

TEST_F(WindChillDisplay, ShowsTheStationsOwnChillWhenTheFormulaIsOff) {
    state.settings.newchill = false;
    struct Case {
        const char* what;
        double celsius;
        const char *in_celsius, *in_fahrenheit;
    };
    for (const Case& c : {
             Case{"above zero", 9, "+9", "+48.2"},
             Case{"below zero", -9, "-9", "+15.8"},
             Case{"minus zero", -0.0, "-0", "+32"},
             Case{"two digits", -25, "-25", "-13"},
             Case{"warmer than the air: taken as it is", 40, "+40", "+104"},
         }) {
        SCOPED_TRACE(c.what);
        station.wind.chill_c = c.celsius;
        use(TemperatureUnit::celsius);
        train();
        EXPECT_EQ(panel.TxtWindChill.text, std::string(c.in_celsius) + " \260C");
        use(TemperatureUnit::fahrenheit);
        train();
        EXPECT_EQ(panel.TxtWindChill.text, std::string(c.in_fahrenheit) + " \260F");
    }
}

TEST_F(WindChillDisplay, TheChillNeedsASoundTemperature) {
    train();
    const std::string before = panel.TxtWindChill.text;
    station.temperature.outdoor_fault = true;
    station.wind.average_ms = 9;
    train();
    train();
    EXPECT_EQ(panel.TxtWindChill.text, before);
    lone();
    EXPECT_EQ(panel.TxtWindChill.text, before) << "a lone group goes by the temperature of the last train";
    EXPECT_EQ(panel.Text2[3].text, " 32.4 km/h") << "the wind itself is shown";
}

TEST_F(WindChillDisplay, ALoneGroupBeforeTheFirstTemperatureShowsItsWindAndNoChill) {
    for (const bool newchill : {true, false}) {
        SCOPED_TRACE(newchill ? "by the formula" : "by the station");
        state.settings.newchill = newchill;
        lone();
        EXPECT_EQ(panel.Text2[6].text, " 15.1 km/h");
        EXPECT_EQ(panel.TxtWindChill.text, "") << "the first train gave no temperature";
        EXPECT_EQ(panel.TxtWindChill.balloon, "");
        EXPECT_EQ(readings.ChillInvariant, "");
        EXPECT_EQ(state.log_fields.logchill, LogFields{}.logchill);
    }
}

TEST_F(WindChillDisplay, ALoneGroupAfterTheFirstTrainIsNoStrikeForTheTemperature) {
    station.temperature.outdoor_fault = true;
    BareCopy fresh;
    fresh.train(station);
    fresh.lone(station);
    fresh.train(station);
    EXPECT_TRUE(fresh.state.sensors.peoterr.raised) << "the first strike, and not the second";
    EXPECT_NE(fresh.state.panel.Text2[0].text, "Error");
}

TEST_F(WindChillDisplay, ALoneGroupMovesTheChillToo) {
    train();
    station.wind.average_ms = 0;
    lone();
    EXPECT_EQ(panel.TxtWindChill.text, "+12.3 \260C");
}

}  // namespace
}  // namespace nimbry::test
