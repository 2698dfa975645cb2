#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "engine/core/process_cycle.h"
#include "engine/core/run_time_error.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/records/rain.h"
#include "engine/reports/tag_words.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

/// A copy that may be asked for tags in any units.
class TagLaws : public testing::Test {
protected:
    void use(const char* key) {
        MainSettings& s = world.state.settings;
        const std::string name = key;
        s.fWindms = name == "fWindms" || s.fWindms;
        s.fRainin = name == "fRainin" || s.fRainin;
        s.fTempF = name == "fTempF" || s.fTempF;
        s.fBarinhg = name == "fBarinhg" || s.fBarinhg;
        world.state.units = units_from(s);
    }
    /// The next train, with these speeds.
    void wind(double gust_ms, double average_ms) {
        world.station.wind.gust_ms = gust_ms;
        world.station.wind.average_ms = average_ms;
        world.train(world.station);
    }
    void temperatures(double outdoor, double indoor) {
        world.station.temperature.outdoor = outdoor;
        world.station.temperature.indoor = indoor;
        world.train(world.station);
    }
    [[nodiscard]] std::string tag(const char* name) { return world.tag(name); }
    WeatherState& state() { return world.state; }

    KnownState world;
};

TEST_F(TagLaws, ReadingsComeInTheUnitsOfDisplay) {
    for (const char* key : {"fWindms", "fRainin", "fTempF", "fBarinhg"}) use(key);
    world.train(world.station);
    EXPECT_EQ(tag("WEBWINDGSS"), "5.4 m/S");
    EXPECT_EQ(tag("WBNWINDAVS"), "3.4");
    EXPECT_EQ(tag("WEBOUTTEMP"), "+46.6 \260F");
    EXPECT_EQ(tag("WBNOUTTEMP"), "+46.6");
    EXPECT_EQ(tag("WEBOUTTMPC"), "+8.1");
    EXPECT_EQ(tag("WEBINSTEMP"), "+70.5 \260F");  // 70.52
    EXPECT_EQ(tag("WBNINSTEMP"), "+70.5");
    EXPECT_EQ(tag("WEBDEWPOIN"), "+30.9 \260F");  // 30.92
    EXPECT_EQ(tag("WBNDEWPOIN"), "+30.9");
    EXPECT_EQ(tag("WEBDEWPNTC"), "-0.6");
    EXPECT_EQ(tag("WBNWNDCHIL"), "+42.8");
    EXPECT_EQ(tag("WBNWNDCHLC"), "+6");
    EXPECT_EQ(tag("WEBBAROMTR"), "29.91 In.Hg");
    EXPECT_EQ(tag("WBNBAROMTR"), "29.91");
    EXPECT_EQ(tag("WEBBARMBHP"), "1013");
    EXPECT_EQ(tag("WEBRAINRAT"), "0.08 In./hour");
    EXPECT_EQ(tag("WEBRNRATMM"), "2");
    EXPECT_EQ(tag("WEBTOTRAIN"), "4.84 In. of rain since October 5");  // 123 mm
    EXPECT_EQ(tag("WEBRNTOTMM"), "123");
    EXPECT_EQ(tag("WEBTEMPUNT"), "\260F");
    EXPECT_EQ(tag("WEBRAINUNT"), "In.");
    EXPECT_EQ(tag("WEBWINDUNT"), "m/S");
    EXPECT_EQ(tag("WEBBAROUNT"), "In.Hg");
    EXPECT_EQ(tag("WEBLSTRAIN"), "2.5 In.");
}

TEST_F(TagLaws, CalmIsJudgedInTheUnitOfDisplayByTheReadingsAndInMetresASecondByThePeak) {
    use("fWindms");
    state().readings.MaxGustMs = "0";
    wind(0.1, 0.1);
    EXPECT_EQ(tag("WEBWINDGSS"), "Calm");
    EXPECT_EQ(tag("WBNWINDGSS"), "0");
    EXPECT_EQ(tag("WEBWINDAVS"), "Calm");
    EXPECT_EQ(tag("WBNWINDAVS"), "0");
    wind(0.2, 0.2);
    EXPECT_EQ(tag("WEBWINDGSS"), "0.2 m/S");
    EXPECT_EQ(tag("WBNWINDGSS"), "0.2");
    EXPECT_EQ(tag("WBNWINDAVS"), "0.2");
    for (const char* name : {"WBNWNDGSMS", "WBNWNDGSKP", "WBNWNDGSMP", "WBNWNDGSKT", "WBNWNDASMS", "WBNWNDASKP",
                             "WBNWNDASMP", "WBNWNDASKT"})
        EXPECT_EQ(tag(name), "0") << name;
    wind(0.3, 0.3);
    EXPECT_EQ(tag("WBNWNDGSMS"), "0.3");
    EXPECT_EQ(tag("WBNWNDGSKP"), "1.1");
    EXPECT_EQ(tag("WBNWNDGSMP"), "0.7");
    EXPECT_EQ(tag("WBNWNDGSKT"), "0.6");
    EXPECT_EQ(tag("WBNWNDASMS"), "0.3");
    EXPECT_EQ(tag("WBNWNDASKP"), "1.1");
}

TEST_F(TagLaws, TheStrongestGustOfTheDayIsCalmToTwoTenths) {
    for (const auto& [ms, text] : {std::pair{0.2F, "Calm"}, std::pair{0.3F, "0.3"}}) {
        state().records.day.maxwind = ms;
        EXPECT_EQ(tag("WBNWDAMXMS"), text);
    }
    EXPECT_EQ(tag("WBNWDAMXKP"), "1.1");
    EXPECT_EQ(tag("WBNWDAMXMP"), "0.7");
    EXPECT_EQ(tag("WBNWDAMXKT"), "0.6");
}

TEST_F(TagLaws, ThePeakIsTheHighestGustAndNotThePresentOne) {
    wind(7.7, 3);
    wind(2.1, 3);
    EXPECT_EQ(tag("WBNWNDGSMS"), "7.7");
    EXPECT_EQ(tag("WBNWINDGSS"), "7.6");  // 2.1 m/s in km/h
}

TEST_F(TagLaws, NegativeTemperaturesInBothForms) {
    temperatures(-20, -0.0);
    EXPECT_EQ(tag("WEBOUTTMPC"), "-20");
    EXPECT_EQ(tag("WEBOUTTMPF"), "-4");
    EXPECT_EQ(tag("WEBINTEMPC"), "-0");
    EXPECT_EQ(tag("WEBINTEMPF"), "+32");
    EXPECT_EQ(tag("WBNINSTEMP"), "-0");
    for (const auto& [name, text] :
         {std::pair{"WEBDEWPNTF", &Readings::DewInvariant}, std::pair{"WBNWNDCHLF", &Readings::ChillInvariant},
          std::pair{"WEBWETBLBF", &Readings::WetBulbInvariant}, std::pair{"WBNHTINDXF", &Readings::HeatInvariant}}) {
        state().readings.*text = "-30";
        EXPECT_EQ(tag(name), "--22") << name;
        state().readings.*text = "-17.8";
        EXPECT_EQ(tag(name), "+0") << name;
    }
    state().records.day.mindew = state().records.day.minwc = state().records.day.maxhi = -30;
    EXPECT_EQ(tag("WEBTDPMINF"), "-22");
    EXPECT_EQ(tag("WEBTCLMINF"), "-22");
    EXPECT_EQ(tag("WEBTHXMAXF"), "-22");
    EXPECT_EQ(tag("WEBTHXMAXC"), "-30");
}

TEST_F(TagLaws, AHeatIndexFromTwentyDegrees) {
    state().panel.TxtHeatInd.text = "+35 \260C";
    state().readings.HeatInvariant = "+35";
    EXPECT_EQ(tag("WEBHEATIDX"), "+35 \260C");
    EXPECT_EQ(tag("WBNHEATIDX"), "+35");
    EXPECT_EQ(tag("WBNHTINDXC"), "+35");
    EXPECT_EQ(tag("WBNHTINDXF"), "+95");
}

TEST_F(TagLaws, DirectionsHaveNoLeadingZeros) {
    world.station.wind.gust_direction = 45;
    world.station.wind.average_direction = 0;
    world.train(world.station);
    EXPECT_EQ(tag("WEBWINDGSD"), "45\260 (NE)");
    EXPECT_EQ(tag("WBNWINDGSD"), "45");
    EXPECT_EQ(tag("WEBWINDAVD"), "0\260 (N)");
    EXPECT_EQ(tag("WBNWINDAVD"), "0");
}

TEST_F(TagLaws, ASaturatedSensorReadsAHundredPercent) {
    world.station.humidity.outdoor = 97;
    world.station.humidity.outdoor_over_range = true;
    world.train(world.station);
    EXPECT_EQ(tag("WEBOSHUMID"), "100 %");
}

TEST_F(TagLaws, TheDewPointHasNoErrorOfItsOwn) {
    world.station.temperature.outdoor_fault = true;
    world.train(world.station);
    world.train(world.station);
    EXPECT_EQ(tag("WEBOUTTEMP"), "Error");
    EXPECT_EQ(tag("WEBWNDCHIL"), "+6 \260C");  // only the wind takes the chill away
    EXPECT_EQ(tag("WBNWNDCHLC"), "+6");
    EXPECT_EQ(tag("WEBDEWPNTC"), "-0.6");
    EXPECT_EQ(tag("WBNDEWPOIN"), "-0.6");
}

TEST_F(TagLaws, OneFaultyTrainChangesNothing) {
    world.station.wind.fault_bits = 8;
    world.station.rain.fault = true;
    world.train(world.station);
    EXPECT_EQ(tag("WEBWINDGSS"), "19.4 km/h");
    EXPECT_EQ(tag("WBNWNDASMS"), "3.4");
    EXPECT_EQ(tag("WEBRNRATMM"), "2");
    EXPECT_EQ(tag("WEBWINDGSD"), "123\260 (SE)");
}

TEST_F(TagLaws, TheTimesPartsHaveNoLeadingZero) {
    world.station.clock = station_moment(october_afternoon - std::chrono::hours{5});
    world.train(world.station);
    EXPECT_EQ(tag("WEBTIMENOW"), "09:05:07");
    EXPECT_EQ(tag("WEBTIMENHR"), "9");
    state().readings.rdattime = "00:00:00";
    EXPECT_EQ(tag("WEBTIMENHR"), "0");
    EXPECT_EQ(tag("WEBTIMENMI"), "0");
    EXPECT_EQ(tag("WEBTIMENSE"), "0");
}

TEST_F(TagLaws, ADayBelowTenHasTwoDigitsInADateAndOneInTheShortDate) {
    const CivilTime fifth = october_afternoon - std::chrono::days{16};
    world.clock.set_computer_time(fifth);
    world.station.clock = station_moment(fifth);
    world.train(world.station);
    EXPECT_EQ(tag("WEBDATENOW"), "05 Oct 2026");
    EXPECT_EQ(tag("WEBMNTHNOW"), "Oct  5");
    EXPECT_EQ(tag("WEBUTCDATE"), "05 October 2026");
}

TEST_F(TagLaws, TheLastHourBeginsWithNothingMeasured) {
    UnsetState fresh;
    updategraphs(fresh.copy);
    rain_last_hour(fresh.copy);
    EXPECT_EQ(fresh.tag("WEBWINDGLH"), "0");
    EXPECT_EQ(fresh.tag("WBNWINDGLH"), "0");
    EXPECT_EQ(fresh.tag("WEBRAINLHR"), "0 mm");
    EXPECT_EQ(fresh.tag("WEBRNLHRMM"), "0");
}

TEST_F(TagLaws, RainThatIsNilSaysSo) {
    state().rain.rainatchange = 123;
    world.train(world.station);
    EXPECT_EQ(tag("WEBRAINTOD"), "nil");
    EXPECT_EQ(tag("WEBRNTODMM"), "0");
}

TEST_F(TagLaws, RainSinceMidnightHasNoLabelInEitherUnit) {
    EXPECT_EQ(tag("WEBRAINSLM"), "7");
    use("fRainin");
    EXPECT_EQ(tag("WEBRAINSLM"), "0.28");
}

TEST_F(TagLaws, RainSinceMidnightIsTodaysWhereTheDayEndsAtMidnight) {
    state().settings.tmidnight = true;
    state().rain.raintoday = 3;
    world.refresh();
    EXPECT_EQ(tag("WEBRAINSLM"), "3");
}

struct ChangeoverCase {
    bool tmidnight, tnineam, AddOneHour;
    const char* name;
};

TEST_F(TagLaws, OfTheChangeoversTheLastThatHoldsIsNamed) {
    for (const ChangeoverCase& row : {ChangeoverCase{true, false, false, "Midnight"},
                                      {true, false, true, "Midnight"},
                                      {false, true, false, "9.00 am"},
                                      {false, true, true, "10.00 am"},
                                      {true, true, false, "9.00 am"},
                                      {false, false, true, ""}}) {
        state().settings.tmidnight = row.tmidnight;
        state().settings.tnineam = row.tnineam;
        state().settings.AddOneHour = row.AddOneHour;
        EXPECT_EQ(tag("WEBCHNGTIM"), row.name);
    }
}

TEST_F(TagLaws, TheUsersFileIsReadAnewAtEachOccurrence) {
    world.files.forget_calls();
    EXPECT_EQ(tag("WEBFILETAG"), "<p>News of the club</p>");
    world.files.put("webfiletag.txt", "a\rb\nc\r\nd~~WEBOUTTEMP~~\xFF\t ");
    EXPECT_EQ(tag("WEBFILETAG"), "abcd~~WEBOUTTEMP~~\xFF\t ");
    EXPECT_EQ(world.files.calls().size(), 2U);
}

TEST_F(TagLaws, TheUsersFileIsFoundUnderAnyCase) {
    world.files.take_away("webfiletag.txt");
    EXPECT_EQ(tag("WEBFILETAG"), "");
    world.files.put("WebFileTag.TXT", "found");
    EXPECT_EQ(tag("WEBFILETAG"), "found");
    world.files.put("webfiletag.txt", "by its own name");
    EXPECT_EQ(tag("WEBFILETAG"), "by its own name");
}

TEST_F(TagLaws, AUsersFileThatCannotBeReadPrintsNothing) {
    world.files.refuse("webfiletag.txt", FileResult::permission);
    EXPECT_EQ(tag("WEBFILETAG"), "");
}

TEST_F(TagLaws, InAnAlarmMailTheHeadingGoesIntoTheBodyByItself) {
    state().reports.IsAlarmMail = true;
    state().reports.mail_body = "before|";
    state().alarms.AlarmReason = "the wind speed is above the alarm threshold";
    EXPECT_EQ(tag("WEBMLTITLE"), "");
    EXPECT_EQ(state().reports.mail_body,
              "before|Automatic ALARM email from Nimbry 2.02\r\n"
              "This email was sent because the wind speed is above the alarm threshold\r\n" +
                  std::string(52, '*') + "\r\n\r\n");
}

TEST_F(TagLaws, InAMailThatTellsOfAWindAlarmTheGustIsTheOneThatRaisedIt) {
    state().alarms.gust = AlarmGust{"72.4 km/h", "72.4", 20.12};
    state().alarms.AlarmReason = "the wind speed is above the alarm threshold";
    EXPECT_EQ(tag("WEBWINDGSS"), "19.4 km/h");  // in a page

    const auto busy = state().reports.mailGenBusy.try_hold();
    EXPECT_EQ(tag("WEBWINDGSS"), "72.4 km/h");
    EXPECT_EQ(tag("WBNWINDGSS"), "72.4");
    EXPECT_EQ(tag("WBNWNDGSMS"), "20.12");  // not rounded
    EXPECT_EQ(tag("WBNWNDGSKP"), "72.4");   // 72.432
    EXPECT_EQ(tag("WBNWNDGSMP"), "45");     // 45.007
    EXPECT_EQ(tag("WBNWNDGSKT"), "39.6");   // 39.624
    EXPECT_EQ(tag("WEBWINDAVS"), "12.2 km/h");

    state().alarms.gust->ms = 0.1;
    EXPECT_EQ(tag("WBNWNDGSMS"), "0.1") << "calm is not asked of it";
    EXPECT_EQ(tag("WBNWNDGSKP"), "0.4") << "0.36";

    state().alarms.AlarmReason = "the outside temperature is above the alarm threshold";
    EXPECT_EQ(tag("WEBWINDGSS"), "19.4 km/h");
    EXPECT_EQ(tag("WBNWNDGSMS"), "6.2");
}

TEST_F(TagLaws, WithoutAKeptGustAMailShowsTheOrdinaryOne) {
    state().alarms.AlarmReason = "the wind speed is above the alarm threshold";
    const auto busy = state().reports.mailGenBusy.try_hold();
    EXPECT_EQ(tag("WEBWINDGSS"), "19.4 km/h");
    EXPECT_EQ(tag("WBNWNDGSKP"), "22.3");
}

TEST_F(TagLaws, TheSaveThatEmptiesTheAlarmsReasonForgetsItsGust) {
    state().alarms.gust = AlarmGust{"72.4 km/h", "72.4", 20.12};
    state().alarms.AlarmReason = "the wind speed is above the alarm threshold";
    state().run.SaveCounter = 29;
    processcycle(world.copy);
    EXPECT_EQ(state().alarms.AlarmReason, "");
    EXPECT_FALSE(state().alarms.gust);
}

struct CoordinateCase {
    const char* decimal;
    const char* latitude;
    const char* longitude;
};

TEST(CoordinateTexts, AreWorkedOutFromTheNearestSingleAndNeverCarried) {
    const std::vector<CoordinateCase> cases{
        {"999", "Unknown", "Unknown"},
        {"999.000", "Unknown", "Unknown"},
        {"", "Unknown", "Unknown"},
        {"here", "Unknown", "Unknown"},
        {"1E30", "Unknown", "Unknown"},
        {"0", "00\260 00' 00.00'' North", "000\260 00' 00.00'' East"},
        {"-33.85", "33\260 50' 59.99'' South", "033\260 50' 59.99'' West"},
        {"-33,85", "33\260 50' 59.99'' South", "033\260 50' 59.99'' West"},
        {"0.7", "00\260 41' 60.00'' North", "000\260 41' 60.00'' East"},
        {"-33.8568", "33\260 51' 24.48'' South", "033\260 51' 24.48'' West"},
    };
    for (const CoordinateCase& row : cases) {
        EXPECT_EQ(latitude_text(row.decimal), row.latitude) << row.decimal;
        EXPECT_EQ(longitude_text(row.decimal), row.longitude) << row.decimal;
    }
    EXPECT_EQ(longitude_text("151.2"), "151\260 11' 59.99'' East");
}

TEST_F(TagLaws, TheSunsSentencesSayThatNoLocationIsEntered) {
    state().settings.Longitude = "999";
    EXPECT_EQ(tag("WEBSUNRISE"), "Can't calculate Sunrise as no location entered");
    EXPECT_EQ(tag("WEBSUNSETS"), "Can't calculate Sunset as no location entered");
    EXPECT_EQ(tag("WEBLONGITD"), "Unknown");
    EXPECT_EQ(tag("WEBLATITUD"), "33\260 51' 24.48'' South");
}

TEST_F(TagLaws, ANumberTooLargeIsTheGeneratorsError) {
    state().rain.raintoday = std::numeric_limits<float>::infinity();
    EXPECT_THROW((void)tag("WEBRNTODMM"), RunTimeError);
}

}  // namespace
}  // namespace nimbry::test
