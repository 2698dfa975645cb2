#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <type_traits>

#include "engine/core/run_time_error.h"
#include "engine/derived/cloud_base.h"
#include "engine/derived/dew_point.h"
#include "engine/derived/heat_index.h"
#include "engine/derived/wet_bulb.h"
#include "engine/derived/wind_chill.h"

namespace nimbry {
namespace {

// Expected values come from a separate calculation in Python. The tolerances are finer than one unit of the last digit
// of any constant, so that none of them can be "improved" unnoticed.

struct DewCase {
    const char* what;
    double temperature, humidity;
    double dew_point, vapour_pressure;
};

TEST(DewPointFormula, SolvesTheMagnusFormWithItsOwnConstants) {
    for (const DewCase& c : {
             DewCase{"a mild room", 20, 50, 9.2535236906, 11.6703368479},
             DewCase{"frost", -10, 80, -12.7834940409, 2.2895515859},
             DewCase{"the sensor's last reading in the tropics", 30, 97, 29.4679618143, 41.0493262904},
             DewCase{"saturated air misses its own temperature a little", 30, 100, 29.9986333737, 42.3188930829},
             DewCase{"freezing fog", 0, 100, -0.0000235097, 6.11},
             DewCase{"the driest reading", 25, 1, -34.7967665882, 0.3160698870},
             DewCase{"the lowest temperature that the digits hold", -79.9, 1, -103.63142837109795,
                     9.738962489950874e-06},
             DewCase{"the highest one", 79.9, 100, 79.89573403779428, 470.8130748388083},
         }) {
        SCOPED_TRACE(c.what);
        const DewPoint dew = dew_point(c.temperature, c.humidity);
        EXPECT_NEAR(dew.celsius, c.dew_point, 1e-9);
        EXPECT_NEAR(dew.vapour_pressure, c.vapour_pressure, 1e-9);
    }
}

TEST(DewPointFormula, RefusesWhatHasNoLogarithmOrNoResult) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [what, temperature, humidity] : {
             std::tuple{"humidity 0", 20.0, 0.0},
             std::tuple{"a negative humidity", 20.0, -1.0},
             std::tuple{"a temperature that is none", nan, 50.0},
         }) {
        SCOPED_TRACE(what);
        try {
            (void)dew_point(temperature, humidity);
            ADD_FAILURE() << "no error";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, ErrorNumber::invalid_argument);
        }
    }
}

struct WetBulbCase {
    const char* what;
    double temperature, dew_point, vapour_pressure, pressure;
    double wet_bulb;
};

TEST(WetBulbFormula, BalancesThePsychrometerAgainstTheSaturationCurve) {
    for (const WetBulbCase& c : {
             WetBulbCase{"a mild room", 20, 9.3, 11.670337, 1013, 14.2252307},
             WetBulbCase{"frost", -10, -12.8, 2.289552, 1013, -10.6081394},
             WetBulbCase{"saturated air", 30, 30, 42.318893, 1013, 30},
             WetBulbCase{"low pressure", 12.3, 3.3, 7.716760, 900, 7.9957816},
             WetBulbCase{"no pressure heard yet: the dew point itself", 5, 2, 7, 0, 2},
             WetBulbCase{"far outside any weather", 79.9, -20, 1.2, 1049, 66.8793287},
         }) {
        SCOPED_TRACE(c.what);
        EXPECT_NEAR(wet_bulb(c.temperature, c.dew_point, c.vapour_pressure, c.pressure), c.wet_bulb, 4e-6);
    }
}

static_assert(std::is_same_v<decltype(wet_bulb(0, 0, 0, 0)), float>, "the wet bulb is kept as a single");

TEST(WetBulbDepression, RoundsTheWetBulbFirstAndThenTheDifference) {
    EXPECT_DOUBLE_EQ(wet_bulb_depression(20, 14.2252307F), 5.8);
    EXPECT_DOUBLE_EQ(wet_bulb_depression(8.1, 4.7193455F), 3.4);
    EXPECT_DOUBLE_EQ(wet_bulb_depression(30, 30.0F), 0);
    // The wet bulb is 14.3 first: one step would give 5.82 and 5.78, both 5.8.
    EXPECT_DOUBLE_EQ(wet_bulb_depression(20.08, 14.26F), 5.8);
    EXPECT_DOUBLE_EQ(wet_bulb_depression(20.04, 14.26F), 5.7);
}

struct CloudCase {
    const char* what;
    double temperature, dew_point;
    int metres, feet;
};

TEST(CloudBaseFormula, CutsMetresAndFeetOfTheSameHeight) {
    for (const CloudCase& c : {
             CloudCase{"feet come from the uncut metres (1337.5)", 20, 9.3, 1337, 4387},
             CloudCase{"the same below 0", 8.1, -0.6, 1087, 3567},
             CloudCase{"fog", 30, 30, 0, 0},
             CloudCase{"a dew point above the temperature: cut toward zero", 30, 30.1, -12, -41},
             CloudCase{"both below 0", -10, -12.8, 350, 1148},
             CloudCase{"dry air", 25, -34.8, 7475, 24518},
         }) {
        SCOPED_TRACE(c.what);
        const CloudBase base = cloud_base(c.temperature, c.dew_point);
        EXPECT_EQ(base.metres, c.metres);
        EXPECT_EQ(base.feet, c.feet);
    }
}

struct ChillCase {
    const char* what;
    double temperature, wind_kmh;
    double chill;
};

TEST(WindChillFormula, IsTheFormulaUnlessThatIsWarmerThanTheAir) {
    for (const ChillCase& c : {
             ChillCase{"a cool breeze", 8.1, 12.24, 5.97414799},
             ChillCase{"frost and wind", -10, 30, -19.52049803},
             ChillCase{"a gale in the cold", -20, 50, -35.40046766},
             ChillCase{"the lowest digits in a storm", -79.9, 359.64, -146.92424868},
             ChillCase{"a breath of air: capped", 12.3, 0.36, 12.3},
             ChillCase{"calm: capped", 0, 0, 0},
             ChillCase{"calm, just below the seam: capped", 34.6, 0, 34.6},
             ChillCase{"calm, above the seam: 13.12 + 0.6215 T", 35, 0, 34.8725},
             ChillCase{"hot wind: capped", 79.9, 359.64, 79.9},
         }) {
        SCOPED_TRACE(c.what);
        EXPECT_NEAR(wind_chill(c.temperature, c.wind_kmh), c.chill, 1e-8);
    }
}

struct HeatSumCase {
    const char* what;
    double temperature, humidity;
    double sum;
};

TEST(HeatIndexFormula, SumsItsSixteenTerms) {
    for (const HeatSumCase& c : {
             HeatSumCase{"the seam at 20 degrees C", 68, 50, 75.758273580},
             HeatSumCase{"the tropics", 86, 97, 107.980444448},
             HeatSumCase{"the driest reading", 68, 1, 61.509998492},
             HeatSumCase{"the first constant alone", 0, 0, 16.923},
             HeatSumCase{"the largest of every term", 175.8, 99, 1172.656023257},
             HeatSumCase{"temperature alone", 175.8, 0, 130.548244105},
             HeatSumCase{"humidity alone", 0, 99, 649.216152312},
         }) {
        SCOPED_TRACE(c.what);
        EXPECT_NEAR(heat_index_sum(c.temperature, c.humidity), c.sum, 1e-8);
    }
}

struct HeatCase {
    const char* what;
    double temperature, humidity;
    double fahrenheit, celsius;
};

TEST(HeatIndexFormula, RoundsFahrenheitFirstAndMakesCelsiusOfThat) {
    for (const HeatCase& c : {
             HeatCase{"the seam", 20, 50, 75.8, 24.3},
             HeatCase{"a warm day", 30, 54, 89.8, 32.1},
             HeatCase{"an over-range humidity counts as it reads", 30, 97, 108, 42.2},
             HeatCase{"a dangerous day", 35, 80, 130.4, 54.7},
             HeatCase{"dry air feels cooler than it is", 20, 1, 61.5, 16.4},
             HeatCase{"humidity 0", 25, 0, 69.4, 20.8},
         }) {
        SCOPED_TRACE(c.what);
        const HeatIndex index = heat_index(c.temperature, c.humidity);
        EXPECT_DOUBLE_EQ(index.fahrenheit, c.fahrenheit);
        EXPECT_DOUBLE_EQ(index.celsius, c.celsius);
    }
}

}  // namespace
}  // namespace nimbry
