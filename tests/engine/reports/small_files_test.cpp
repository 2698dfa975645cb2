#include "engine/reports/small_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "engine/core/run_time_error.h"
#include "engine/reports/genuiview.h"
#include "engine/reports/raw_line.h"
#include "engine/reports/wxtext.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

struct RawField {
    const char* what;
    std::string known, unset, failed;
};

/// The fields of the raw line in their order, in the three states of tag_states.h.
std::vector<RawField> raw_fields() {
    const std::string same = "what it was";
    std::vector<RawField> fields{
        {"date", "21 Oct 2026", "", same},
        {"short date", "Oct  21", "", same},
        {"time", "14:05:07", "", same},
        {"rain total text", "123 mm of rain since October 5", "", same},
        {"upload interval, minutes", "2", "2", same},
        {"outdoor temperature", "+8.1", "", ""},
        {"outdoor humidity", "54", "", ""},
        {"indoor temperature", "+21.4", "", ""},
        {"indoor humidity", "45", "", ""},
        {"barometer", "1013", "", ""},
        {"trend: 2 rising, 1 steady, 0 falling", "1", "", same},
        {"dew point", "-0.6", "", same},
        {"heat index, none below 20 degrees", "", "", same},
        {"wind chill", "+6", "", ""},
        {"highest gust since the last generation", "6.2", "0", same},
        {"direction of the gust", "123", "", ""},
        {"average speed", "3.4", "", ""},
        {"average direction", "98", "", ""},
        {"rain rate", "2", "", ""},
        {"rain today", "7", "", same},
        {"rain total", "123", "", same},
        {"forecast code", "4", "", same},
        {"wet bulb", "+4.7", "", same},
        {"today's highest outdoor temperature", "+12.3", "", same},
        {"lowest", "-0.5", "", same},
        {"today's highest indoor temperature", "+22.1", "", same},
        {"lowest", "+19", "", same},
        {"today's highest outdoor humidity", "81", "", same},
        {"lowest", "40", "", same},
        {"today's strongest gust", "9.8", "", same},
        {"today's highest barometer", "1015", "", same},
        {"lowest", "1009", "", same},
        {"today's peak rain rate", "4", "", same},
        {"today's highest dew point", "+3.1", "", same},
        {"lowest", "-2.4", "", same},
        {"today's lowest wind chill", "-3.2", "", same},
        {"today's highest heat index", "", "", same},
        {"UTC time", "03:05:07 UTC", "03:05:07 UTC", same},
        {"UTC date", "October 21", "October 21", same},
    };
    for (RawField& field : fields)
        if (field.failed == same) field.failed = field.known;
    return fields;
}

std::string joined(const std::vector<RawField>& fields, std::string RawField::*state, char between) {
    std::string line;
    for (const RawField& field : fields) line += (line.empty() ? "" : std::string(1, between)) + field.*state;
    return line;
}

void expect_fields(Copy& copy, std::string RawField::*state) {
    const std::vector<RawField> expected = raw_fields();
    const std::vector<std::string> values = raw_values(copy);
    ASSERT_EQ(values.size(), 39U);
    ASSERT_EQ(expected.size(), 39U);
    for (std::size_t n = 0; n < 39; ++n) EXPECT_EQ(values[n], expected[n].*state) << n + 1 << ": " << expected[n].what;
}

TEST(RawLine, EveryFieldWithItsReadingKnown) {
    KnownState world;
    expect_fields(world.copy, &RawField::known);
}

TEST(RawLine, EveryFieldBeforeAnythingIsReceived) {
    UnsetState world;
    expect_fields(world.copy, &RawField::unset);
}

TEST(RawLine, EveryFieldAfterEverySensorHasFailed) {
    KnownState world;
    world.fail_every_sensor();
    expect_fields(world.copy, &RawField::failed);
}

TEST(RawLine, IsOneLineWithBarsBetween) {
    KnownState world;
    EXPECT_EQ(raw_line(world.copy), joined(raw_fields(), &RawField::known, '|') + "\r\n");
}

TEST(RawLine, AHeatIndexIsGivenWhenThereIsOne) {
    KnownState world;
    world.state.readings.HeatInvariant = "+35";
    world.state.records.day.maxhi = 36.5F;
    EXPECT_EQ(raw_values(world.copy)[12], "+35");
    EXPECT_EQ(raw_values(world.copy)[36], "+36.5");
}

TEST(RawLine, ARecordOfHumidityThatDoesNotBeginWithADigitIsEmpty) {
    KnownState world;
    world.state.panel.TxtHumMax.text = "- No Valid Data -";
    world.state.panel.TxtHumMin.text = "05 % at 06:10";
    EXPECT_EQ(raw_values(world.copy)[27], "");
    EXPECT_EQ(raw_values(world.copy)[28], "5");
}

TEST(RawLine, ACalmAverageIsZero) {
    KnownState world;
    world.station.wind.average_ms = 0;
    world.train(world.station);
    EXPECT_EQ(raw_values(world.copy)[16], "0");
}

class Wxtext : public testing::Test {
protected:
    [[nodiscard]] std::string file(const std::string& name) const { return world.files.contents(name); }
    KnownState world;
};

TEST_F(Wxtext, BothDataFilesHoldTheRawValuesAndTheChangeover) {
    wxtext(world.copy);
    const std::string line = joined(raw_fields(), &RawField::known, ',') + ",9.00 am\r\n";
    EXPECT_EQ(file("NimbData.txt"), line);
    EXPECT_EQ(file("NimbData.csv"), line);
    EXPECT_EQ(std::count(line.begin(), line.end(), ','), 39);
}

TEST_F(Wxtext, EachDataFileIsPassedOverWhileSomebodyReadsIt) {
    world.files.put("NimbData.txt", "old");
    world.files.put("NimbData.csv", "old");
    world.files.set_in_use("NimbData.txt", true);
    wxtext(world.copy);
    EXPECT_EQ(file("NimbData.txt"), "old");
    EXPECT_NE(file("NimbData.csv"), "old");
}

TEST_F(Wxtext, TheReportIsMadeFromItsTemplateThroughItsWorkFile) {
    world.files.put("wxtexttemplate.txt", "It is ~~WEBOUTTEMP~~.\r\n");
    world.files.put("tpwxtexttemplate.txt", "left over");
    world.files.put("wxtext.txt", "old");
    wxtext(world.copy);
    EXPECT_EQ(file("wxtext.txt"), "It is +8.1 \260C.\r\n");
    EXPECT_FALSE(world.files.exists("tpwxtexttemplate.txt"));
    EXPECT_TRUE(world.files.exists("wxtexttemplate.txt"));
}

TEST_F(Wxtext, WithoutItsTemplateTheReportStays) {
    world.files.put("wxtext.txt", "old");
    wxtext(world.copy);
    EXPECT_EQ(file("wxtext.txt"), "old");
}

TEST_F(Wxtext, ItsTemplateMayNotEndTooSoonBehindATilde) {
    world.files.put("wxtexttemplate.txt", "~~WEBOUT");
    try {
        wxtext(world.copy);
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "wxtext");
        EXPECT_EQ(error.number, ErrorNumber::past_end);
    }
}

TEST_F(Wxtext, DoesNotTouchThePeaks) {
    world.state.reports.new_data = true;
    wxtext(world.copy);
    EXPECT_EQ(world.state.readings.MaxGustMs, "6.2");
    EXPECT_FALSE(world.state.reports.new_data);
}

TEST_F(Wxtext, TheUtcTimeIsThatOfTheReport) {
    world.files.put("wxtexttemplate.txt", "~~WEBUTCTIME~~");
    world.clock.advance(3s);
    wxtext(world.copy);
    EXPECT_EQ(file("wxtext.txt"), "03:05:10");
    EXPECT_TRUE(file("NimbData.txt").ends_with(",03:05:10 UTC,October 21,9.00 am\r\n"));
}

class Genuiview : public Wxtext {};

TEST_F(Genuiview, ThePacketsTimeIsThatOfItsWriting) {
    world.state.reports.new_data = true;
    world.clock.advance(3s);
    genuiview(world.copy);
    EXPECT_NE(file("APRS.txt").find(":@030510z"), std::string::npos) << file("APRS.txt");
    EXPECT_EQ(world.state.readings.MaxGustMs, "6.2") << "the peak goes on";
    EXPECT_FALSE(world.state.reports.new_data);
}

TEST_F(Genuiview, OneRunsAtATime) {
    const auto busy = world.state.reports.genuibusy.try_hold();
    genuiview(world.copy);
    EXPECT_FALSE(world.files.exists("nimbryUI.txt"));
    EXPECT_FALSE(world.files.exists("APRS.txt"));
}

TEST_F(Genuiview, TheSmallFileHasTheMomentAndTheWeather) {
    genuiview(world.copy);
    EXPECT_EQ(file("nimbryUI.txt"), "Oct 21 2026 14:05\r\n098/007g012t046r008P028b10130h54NBY\r\n");
}

TEST_F(Genuiview, TheDayHasNoLeadingZero) {
    world.station.clock = station_moment(october_afternoon - std::chrono::days{16});
    world.train(world.station);
    EXPECT_EQ(ui_moment(world.state.readings), "Oct 5 2026 14:05");
}

TEST_F(Genuiview, ItIsPassedOverWhileSomebodyReadsItAndThePacketIsWrittenAllTheSame) {
    world.files.put("nimbryUI.txt", "old");
    world.files.set_in_use("nimbryUI.txt", true);
    genuiview(world.copy);
    EXPECT_EQ(file("nimbryUI.txt"), "old");
    EXPECT_NE(file("APRS.txt"), "");
}

TEST_F(Genuiview, ThePacketIsOneLine) {
    world.state.publish.NimbryFTPSetup.txtAPRSID = " N0CALL ";
    genuiview(world.copy);
    EXPECT_EQ(file("APRS.txt"),
              "N0CALL>APRS,TCPXX*,qAX,N0CALL:@030507z3351.41S/15112.56E_098/007g012t046r008P028b10130h54NBY\r\n");
}

TEST_F(Genuiview, WithoutCallAndLocationTheirPiecesAreEmpty) {
    world.state.settings.Latitude = "999";
    world.train(world.station);
    genuiview(world.copy);
    EXPECT_TRUE(file("APRS.txt").starts_with(">APRS,TCPXX*,qAX,:@030507z/_098/")) << file("APRS.txt");
}

TEST_F(Genuiview, ADiskThatIsFullIsItsError) {
    world.files.refuse_changes(FileResult::disk_full);
    try {
        genuiview(world.copy);
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "genuiview");
        EXPECT_EQ(error.number, ErrorNumber::disk_full);
    }
    EXPECT_FALSE(world.state.reports.genuibusy);
}

class SmallFiles : public Wxtext {};

TEST_F(SmallFiles, AreWrittenTogether) {
    write_small_files(world.copy);
    for (const char* name : {"nimbryUI.txt", "APRS.txt", "NimbData.txt", "NimbData.csv"})
        EXPECT_TRUE(world.files.exists(name)) << name;
}

TEST_F(SmallFiles, WaitUntilAnotherHasDoneWithThem) {
    auto busy = world.state.reports.genuibusy.try_hold();
    world.pauses.after(2s, [&] { busy.release(); });
    write_small_files(world.copy);
    EXPECT_TRUE(world.files.exists("nimbryUI.txt"));
}

TEST_F(SmallFiles, AreNotWrittenBeforeTheFirstTrainNorWhileAClientFetches) {
    world.state.run.fullystarted = false;
    write_small_files(world.copy);
    world.state.run.fullystarted = true;
    world.state.network.syncing = true;
    write_small_files(world.copy);
    EXPECT_FALSE(world.files.exists("nimbryUI.txt"));
    EXPECT_FALSE(world.files.exists("NimbData.txt"));
}

}  // namespace
}  // namespace nimbry::test
