#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

class GroupCF : public Decoding {};

struct SpeedCase {
    const char* what;
    WindUnit unit;
    double ms;
    const char *text, *number;
};

const SpeedCase speeds[] = {
    {"m/S, calm", WindUnit::ms, 0.0, "Calm", "0"},
    {"m/S, 0.1 is calm", WindUnit::ms, 0.1, "Calm", "0"},
    {"m/S, 0.2 is not", WindUnit::ms, 0.2, " 0.2 m/S", "0.2"},
    {"km/h, calm", WindUnit::kph, 0.0, "Calm", "0"},
    {"km/h, 0.1 m/s is a number", WindUnit::kph, 0.1, " 0.4 km/h", "0.4"},
    {"MPH, calm", WindUnit::mph, 0.0, "Calm", "0"},
    {"MPH, 0.1 m/s rounds to 0.2", WindUnit::mph, 0.1, " 0.2 MPH", "0.2"},
    {"KT, calm", WindUnit::knots, 0.0, "Calm", "0"},
    {"KT, 0.1 m/s rounds to 0.2", WindUnit::knots, 0.1, " 0.2 KT", "0.2"},
    {"m/S, a breeze", WindUnit::ms, 4.2, " 4.2 m/S", "4.2"},
    {"km/h, a breeze", WindUnit::kph, 4.2, " 15.1 km/h", "15.1"},
    {"MPH, a breeze", WindUnit::mph, 4.2, " 9.4 MPH", "9.4"},
    {"KT, a breeze", WindUnit::knots, 4.2, " 8.3 KT", "8.3"},
    {"km/h, a whole number", WindUnit::kph, 31.4, " 113 km/h", "113"},
    {"km/h, the highest digits", WindUnit::kph, 99.9, " 359.6 km/h", "359.6"},
    {"MPH, the highest digits", WindUnit::mph, 99.9, " 223.5 MPH", "223.5"},
    {"KT, the highest digits", WindUnit::knots, 99.9, " 196.7 KT", "196.7"},
};

TEST_F(GroupCF, ShowsGustAndAverageInTheirUnit) {
    for (const SpeedCase& c : speeds) {
        SCOPED_TRACE(c.what);
        use(c.unit);
        station.wind.gust_ms = c.ms;
        station.wind.average_ms = 3.1;
        train();
        EXPECT_EQ(panel.Text2[6].text, c.text);
        EXPECT_EQ(state.log_fields.logwindgs, c.number);
        station.wind.average_ms = c.ms;
        station.wind.gust_ms = 5.4;
        train();
        EXPECT_EQ(panel.Text2[3].text, c.text);
        EXPECT_EQ(state.log_fields.logwindas, c.number);
    }
}

TEST_F(GroupCF, ALoneGroupShowsTheSame) {
    for (const SpeedCase& c : speeds) {
        SCOPED_TRACE(c.what);
        use(c.unit);
        station.wind.gust_ms = c.ms;
        station.wind.average_ms = c.ms;
        lone();
        EXPECT_EQ(panel.Text2[6].text, c.text);
        EXPECT_EQ(panel.Text2[3].text, c.text);
    }
}

TEST_F(GroupCF, ACalmGustKeepsItsMetricNumberAndACalmAverageDoesNot) {
    use(WindUnit::ms);
    station.wind.gust_ms = 0.1;
    station.wind.average_ms = 0.1;
    train();
    EXPECT_EQ(readings.rawwindgs, "0.1");
    EXPECT_EQ(readings.rawwindas, "0");
    station.wind.gust_ms = 5.4;
    station.wind.average_ms = 3.1;
    train();
    EXPECT_EQ(readings.rawwindgs, "5.4");
    EXPECT_EQ(readings.rawwindas, "03.1") << "the digits as sent";
}

TEST_F(GroupCF, KeepsTheHighestGustsUntilSomebodyClearsThem) {
    now += std::chrono::seconds{30};  // past the minute's graph sample, which takes the held gust
    station.wind.gust_ms = 5.4;
    train();
    station.wind.gust_ms = 4.2;
    train();
    EXPECT_EQ(readings.MaxGustMs, "5.4");
    EXPECT_DOUBLE_EQ(readings.GustMph, 9.4);
    EXPECT_DOUBLE_EQ(readings.MaxGustMph, 12.1);
    EXPECT_DOUBLE_EQ(readings.GustSpeed, 15.1);
    EXPECT_DOUBLE_EQ(readings.PeakGust, 19.4);
    EXPECT_DOUBLE_EQ(readings.MaxGustToday, 19.4);
    EXPECT_DOUBLE_EQ(readings.wstempsng, 19.4);
    readings.MaxGustMs.clear();
    readings.MaxGustMph = readings.PeakGust = readings.wstempsng = 0;
    train();
    EXPECT_EQ(readings.MaxGustMs, "4.2");
    EXPECT_DOUBLE_EQ(readings.MaxGustMph, 9.4);
    EXPECT_DOUBLE_EQ(readings.PeakGust, 15.1);
    EXPECT_DOUBLE_EQ(readings.wstempsng, 15.1);
    EXPECT_DOUBLE_EQ(readings.MaxGustToday, 19.4);
}

TEST_F(GroupCF, MilesPerHourTakeAllDigitsOfTheirFactor) {
    station.wind.gust_ms = 26.8;  // 59.95 with 2.237
    train();
    EXPECT_DOUBLE_EQ(readings.GustMph, 59.9);
    station.wind.gust_ms = 30.6;  // 68.449 with 2.2369
    train();
    EXPECT_DOUBLE_EQ(readings.GustMph, 68.5);
}

TEST_F(GroupCF, ACalmGustAdvancesTheMetricMaximaAndNotTheShownOnes) {
    use(WindUnit::ms);
    station.wind.gust_ms = 0.1;
    train();
    EXPECT_EQ(panel.Text2[6].text, "Calm");
    EXPECT_EQ(readings.MaxGustMs, "0.1");
    EXPECT_DOUBLE_EQ(readings.GustMph, 0.2);
    EXPECT_DOUBLE_EQ(readings.MaxGustMph, 0.2);
    EXPECT_EQ(readings.PeakGust, 0);
    EXPECT_EQ(readings.MaxGustToday, 0);
    EXPECT_EQ(readings.wstempsng, 0);
}

TEST_F(GroupCF, GustsAreComparedAsNumbersNotAsTexts) {
    station.wind.gust_ms = 9.0;
    train();
    station.wind.gust_ms = 10.0;
    train();
    EXPECT_EQ(readings.MaxGustMs, "10");
}

TEST_F(GroupCF, LoneGroupsAdvanceTheGustsToo) {
    station.wind.gust_ms = 24.6;
    lone();
    EXPECT_EQ(panel.Text2[6].text, " 88.6 km/h");
    EXPECT_EQ(readings.MaxGustMs, "24.6");
    EXPECT_DOUBLE_EQ(readings.PeakGust, 88.6);
    EXPECT_DOUBLE_EQ(readings.MaxGustToday, 88.6);
    EXPECT_DOUBLE_EQ(readings.MaxGustMph, 55);
    EXPECT_DOUBLE_EQ(readings.wstempsng, 88.6);
}

TEST_F(GroupCF, TheHighestAverageRisesWithTheAverage) {
    station.wind.average_ms = 4.2;
    train();
    station.wind.average_ms = 3.1;
    train();
    EXPECT_DOUBLE_EQ(readings.AvgSpeed, 11.2);
    EXPECT_DOUBLE_EQ(readings.MaxAvg, 15.1);
}

// The gauge.

struct GaugeCase {
    const char* what;
    double gust_ms;
    double value, maximum;
    const char* label;
};

TEST_F(GroupCF, TheGaugeWidensForGoodAndNeverShrinks) {
    use(WindUnit::ms);
    start_gauge(panel, WindUnit::ms);
    for (const GaugeCase& c : {
             GaugeCase{"inside the scale", 14.9, 14.9, 15, "15"},
             GaugeCase{"at its end", 15.0, 15, 15, "15"},
             GaugeCase{"above it: rounded, and one more", 15.1, 15.1, 16, "16"},
             GaugeCase{"a tie goes to the even number: 62, and one more", 62.5, 62.5, 63, "63"},
             GaugeCase{"calm", 0.1, 0, 63, "63"},
             GaugeCase{"a breeze", 4.2, 4.2, 63, "63"},
             GaugeCase{"a tie to the even number above: 64, and one more", 63.5, 63.5, 65, "65"},
         }) {
        SCOPED_TRACE(c.what);
        station.wind.gust_ms = c.gust_ms;
        train();
        EXPECT_DOUBLE_EQ(panel.Gauge1.value, c.value);
        EXPECT_DOUBLE_EQ(panel.Gauge1.maximum, c.maximum);
        EXPECT_EQ(panel.lblGaugeMax.text, c.label);
    }
}

// Directions.

TEST_F(GroupCF, ShowsGustAndAverageDirections) {
    station.wind.gust_direction = 225;
    station.wind.average_direction = 45;
    train();
    EXPECT_EQ(panel.Text2[7].text, "Gust 225\xB0");
    EXPECT_EQ(panel.TxtWinDir.text, "Avg. 45\xB0") << "no leading zero";
    EXPECT_EQ(readings.gdirint, 225);
    EXPECT_EQ(readings.adirint, 45);
    EXPECT_EQ(readings.gwcompaf, "SW");
    EXPECT_EQ(readings.gwcompas, "South West");
    EXPECT_EQ(readings.awcompaf, "NE");
    EXPECT_EQ(readings.awcompas, "North East");
    EXPECT_EQ(state.log_fields.logwindgdr, "225");
    EXPECT_EQ(state.log_fields.logwindad, "45");
}

TEST_F(GroupCF, AnAverageDirectionBeyondTheCircleIsShownAndKeepsTheLastWord) {
    station.wind.average_direction = 90;
    train();
    station.wind.average_direction = 361;
    train();
    EXPECT_EQ(panel.TxtWinDir.text, "Avg. 361\xB0");
    EXPECT_EQ(readings.awcompaf, "E");
    station.wind.average_direction = 999;
    train();
    EXPECT_EQ(panel.TxtWinDir.text, "Avg. 999\xB0");
    EXPECT_EQ(readings.awcompaf, "E");
    station.wind.average_direction = 360;
    train();
    EXPECT_EQ(readings.awcompaf, "N");
}

// The station's record.

TEST_F(GroupCF, ShowsTheStationsRecordGust) {
    station.wind.record_ms = 24.6;
    station.wind.record_direction = 275;
    station.wind.record_at = {.hour = 3, .minute = 17, .day = 15, .month = 3};
    train();
    EXPECT_EQ(panel.TxtWindHiG.text, " 88.6 km/h, 275\xB0 at 03:17 on 15 Mar");
    use(WindUnit::knots);
    station.wind.record_direction = 75;
    station.wind.record_at.day = 5;
    train();
    EXPECT_EQ(panel.TxtWindHiG.text, " 48.4 KT, 075\xB0 at 03:17 on 05 Mar");
    station.wind.record_at.month = 0;
    lone();
    EXPECT_EQ(panel.TxtWindHiG.text, " 48.4 KT, 075\xB0 at 03:17 on 05 ");
}

}  // namespace
}  // namespace nimbry::test
