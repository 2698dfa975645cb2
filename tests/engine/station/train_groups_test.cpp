#include "engine/station/train_groups.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/core/run_time_error.h"
#include "engine/station/digits.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

StationReadings readings() {
    StationReadings r;
    r.clock = {52, 9, 14, 5, 10};
    return r;
}

/// A server's copy with its port open and three bytes waiting there.
struct Doors : test::BareCopy {
    Doors() {
        line.open("/dev/ttyS0");
        line.arrive({1, 2, 3});
        state.settings.fromnet = false;
        state.comm.dworkingb.set();
    }
    void set_frame(Bytes bytes, std::string tag) {
        state.comm.RawBytes = std::move(bytes);
        state.comm.GroupTag = std::move(tag);
    }
    void docf(Bytes bytes) {
        set_frame(std::move(bytes), "CF");
        docfgroup(copy);
    }
    void domain(Bytes bytes) {
        set_frame(std::move(bytes), "8F");
        domaingroup(copy);
    }
    [[nodiscard]] bool line_is_empty() { return line.take().empty(); }
};

struct StartedDoors : Doors {
    StartedDoors() {
        state.run.fullystarted = true;
        state.run.LoneAllowed = true;
    }
};

TEST(Docfgroup, DoesNothingBeforeTheFirstCycle) {
    Doors doors;
    doors.docf(write_lone_wind(readings()));
    EXPECT_FALSE(doors.state.comm.DigitsCFLone.set);
    EXPECT_EQ(doors.state.comm.counters.lone, 0U);
    EXPECT_TRUE(doors.state.comm.dworkingb);
    EXPECT_FALSE(doors.line_is_empty());
}

TEST(Docfgroup, AGoodGroupFillsTheTableAndTheWindTextsAndLetsGo) {
    StartedDoors doors;
    StationReadings r = readings();
    r.wind.gust_ms = 12.3;
    r.wind.gust_direction = 45;
    r.wind.average_ms = 0.9;
    r.wind.average_direction = 7;
    doors.docf(write_lone_wind(r));
    EXPECT_TRUE(doors.state.comm.goodatab);
    EXPECT_TRUE(doors.state.comm.DigitsCFLone.set);
    EXPECT_FALSE(doors.state.comm.DigitsCF.set) << "that is the train's";
    EXPECT_EQ(doors.state.comm.DigitsCFLone(1), 'C');
    EXPECT_EQ(doors.state.comm.DigitsCFLone(2), 'F');
    EXPECT_EQ(doors.state.readings.rdatwindgs, "12.3");
    EXPECT_EQ(doors.state.readings.rdatwindgd, "045");
    EXPECT_EQ(doors.state.readings.rdatwindas, "00.9");
    EXPECT_EQ(doors.state.readings.rdatwindad, "007");
    EXPECT_EQ(doors.state.comm.counters.lone, 1U);
    EXPECT_FALSE(doors.state.comm.dworkingb);
}

TEST(Docfgroup, AFrameOfAnotherLengthIsDropped) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{26}, std::size_t{28}, std::size_t{141}}) {
        SCOPED_TRACE(length);
        StartedDoors doors;
        doors.state.comm.goodatab = true;
        doors.docf(Bytes(length, 0xCF));
        EXPECT_FALSE(doors.state.comm.goodatab);
        EXPECT_FALSE(doors.state.comm.DigitsCFLone.set);
        EXPECT_EQ(doors.state.comm.refusal, FrameFault::wrong_length);
        EXPECT_FALSE(doors.state.comm.dworkingb);
        EXPECT_TRUE(doors.line_is_empty());
    }
}

TEST(Docfgroup, ABadChecksumDropsTheFrameAndKeepsTableAndReadings) {
    StartedDoors doors;
    StationReadings r = readings();
    r.wind.gust_ms = 5;
    doors.docf(write_lone_wind(r));
    r.wind.gust_ms = 9;
    Bytes bad = write_lone_wind(r);
    spoil_checksum(bad, 0xCF);
    doors.state.comm.dworkingb.set();
    doors.docf(bad);
    EXPECT_FALSE(doors.state.comm.goodatab);
    EXPECT_EQ(doors.state.comm.refusal, FrameFault::bad_checksum);
    EXPECT_EQ(doors.state.readings.rdatwindgs, "05.0");
    EXPECT_EQ(field_text(doors.state.comm.DigitsCFLone, digits_cf::gust, 1), "05.0");
    EXPECT_FALSE(doors.state.comm.dworkingb);
    EXPECT_TRUE(doors.line_is_empty());
}

TEST(Docfgroup, AChecksumOf00Passes) {
    StartedDoors doors;
    // 0xCF + 0x31 = 0x100: the wind chill's tens 3, units 1, and nothing else.
    Bytes group(27, 0);
    group[0] = 0xCF;
    group[16] = 0x31;
    doors.docf(group);
    EXPECT_TRUE(doors.state.comm.goodatab);
}

TEST(Docfgroup, AClientLeavesTheLineAlone) {
    StartedDoors doors;
    doors.state.settings.fromnet = true;
    Bytes bad = write_lone_wind(readings());
    spoil_checksum(bad, 0xCF);
    doors.docf(bad);
    EXPECT_FALSE(doors.state.comm.dworkingb);
    EXPECT_FALSE(doors.line_is_empty());
}

TEST(Domaingroup, AGoodTrainFillsTheFiveTablesAndRunsTheCycle) {
    Doors doors;
    doors.domain(write_train(readings()));
    const CommState& comm = doors.state.comm;
    EXPECT_TRUE(comm.goodatab);
    EXPECT_EQ(comm.Digits8F(1), '8');
    EXPECT_EQ(comm.Digits9F(1), '9');
    EXPECT_EQ(comm.DigitsAF(1), 'A');
    EXPECT_EQ(comm.DigitsBF(1), 'B');
    EXPECT_EQ(comm.DigitsCF(1), 'C');
    EXPECT_EQ(comm.DigitsCF(2), 'F');
    EXPECT_FALSE(comm.DigitsCFLone.set);
    EXPECT_EQ(comm.counters.trains, 1U);
    EXPECT_TRUE(doors.state.run.fullystarted);
    EXPECT_FALSE(comm.dworkingb);
    EXPECT_FALSE(doors.line_is_empty()) << "a good train leaves that to the receive event";
}

TEST(Domaingroup, AFrameOfAnotherLengthIsDropped) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{27}, std::size_t{140}, std::size_t{142}}) {
        SCOPED_TRACE(length);
        Doors doors;
        doors.state.comm.goodatab = true;
        doors.domain(Bytes(length, 0x8F));
        EXPECT_FALSE(doors.state.comm.goodatab);
        EXPECT_EQ(doors.state.comm.refusal, FrameFault::wrong_length);
        EXPECT_FALSE(doors.state.comm.dworkingb);
        EXPECT_FALSE(doors.state.run.fullystarted);
        EXPECT_TRUE(doors.line_is_empty());
    }
}

TEST(Domaingroup, OneBadGroupLosesTheWholeTrainAndTheTablesBeforeItStay) {
    for (const GroupSpan& span : train_spans) {
        SCOPED_TRACE(span.tag);
        Doors doors;
        doors.domain(write_train(readings()));
        StationReadings r = readings();
        r.clock.hour = 15;
        r.temperature.outdoor = 20;
        r.barometer.hpa = 990;
        r.rain.total_mm = 777;
        r.wind.gust_ms = 20;
        Bytes bad = write_train(r);
        spoil_checksum(bad, span.tag);
        doors.state.comm.dworkingb.set();
        doors.domain(bad);
        const CommState& comm = doors.state.comm;
        EXPECT_FALSE(comm.goodatab);
        EXPECT_EQ(comm.refusal, FrameFault::bad_checksum);
        EXPECT_EQ(comm.counters.trains, 1U);
        EXPECT_EQ(comm.counters.bad_checksum, 1U);
        EXPECT_EQ(field_text(comm.Digits8F, digits_8f::hour), "14");
        EXPECT_EQ(field_text(comm.Digits9F, digits_9f::outdoor, 1), "12.3");
        EXPECT_EQ(field_text(comm.DigitsAF, digits_af::barometer), "1013");
        EXPECT_EQ(field_text(comm.DigitsBF, digits_bf::total), "0123");
        EXPECT_EQ(field_text(comm.DigitsCF, digits_cf::gust, 1), "04.2");
        EXPECT_EQ(doors.state.readings.rdattime, "14:09:52");
        EXPECT_FALSE(comm.dworkingb);
        EXPECT_TRUE(doors.line_is_empty());
    }
}

TEST(Domaingroup, AnImpossibleDateEndsItAfterTheFirstGroup) {
    StartedDoors doors;
    doors.state.panel.Text2[0].text = "as before";
    StationReadings r = readings();
    r.clock.day = 31;
    r.clock.month = 2;
    doors.domain(write_train(r));
    EXPECT_TRUE(doors.state.comm.goodatab);
    EXPECT_FALSE(doors.state.readings.HaveValidDate);
    EXPECT_EQ(doors.state.comm.refusal, FrameFault::impossible_date);
    EXPECT_EQ(doors.state.panel.Text2[0].text, "as before");
    EXPECT_FALSE(doors.state.comm.dworkingb);
    EXPECT_TRUE(doors.line_is_empty());
}

TEST(Domaingroup, AClientLeavesTheLineAlone) {
    Doors doors;
    doors.state.settings.fromnet = true;
    Bytes bad = write_train(readings());
    spoil_checksum(bad, 0x8F);
    doors.domain(bad);
    EXPECT_FALSE(doors.state.comm.dworkingb);
    EXPECT_FALSE(doors.line_is_empty());
}

TEST(Domaingroup, SetsEveryRawText) {
    Doors doors;
    StationReadings r;
    r.clock = {7, 5, 9, 5, 12};
    r.humidity.outdoor = 93;
    r.humidity.indoor = 8;
    r.temperature.outdoor = -4.7;
    r.temperature.indoor = 21.5;
    r.barometer = {987, 4, 8};
    r.rain.rate_mm = 12;
    r.rain.total_mm = 345;
    r.wind.gust_ms = 31.4;
    r.wind.gust_direction = 225;
    r.wind.average_ms = 4;
    r.wind.average_direction = 200;
    doors.domain(write_train(r));
    const Readings& raw = doors.state.readings;
    EXPECT_EQ(raw.rdattime, "09:05:07");
    EXPECT_EQ(raw.rdatday, "5");
    EXPECT_EQ(raw.rdatmonth, "Dec");
    EXPECT_EQ(raw.rdathumidity, "93");
    EXPECT_EQ(raw.rdatinhumidity, "08");
    EXPECT_EQ(raw.rdatotempsign, "-");
    EXPECT_EQ(raw.rdatotemp, "04.7");
    EXPECT_EQ(raw.rdatitempsign, "+");
    EXPECT_EQ(raw.rdatitemp, "21.5");
    EXPECT_EQ(raw.rdatbarometer, "0987");
    EXPECT_EQ(raw.rdatbarotrend, '4');
    EXPECT_EQ(raw.rdatoutlook, 8);
    EXPECT_EQ(raw.rdatpeakrain, "012");
    EXPECT_EQ(raw.rdattotrain, "0345");
    EXPECT_EQ(raw.rdatwindgs, "31.4");
    EXPECT_EQ(raw.rdatwindgd, "225");
    EXPECT_EQ(raw.rdatwindas, "04.0");
    EXPECT_EQ(raw.rdatwindad, "200");
}

TEST(Domaingroup, AMonthDigitThatIsNoneGivesNoMonth) {
    for (const int month : {0, 13, 14, 15}) {
        SCOPED_TRACE(month);
        Doors doors;
        StationReadings r = readings();
        r.clock.month = month;
        doors.domain(write_train(r));
        EXPECT_EQ(doors.state.readings.rdatmonth, "");
        EXPECT_EQ(doors.state.comm.refusal, FrameFault::impossible_date);
    }
}

// Errors

struct BrokenLine : SerialLine {
    PortOpenResult open(const std::string&) override { return PortOpenResult::ok; }
    void close() override {}
    [[nodiscard]] bool is_open() const override { return true; }
    Bytes take() override { throw RunTimeError{ErrorNumber::overflow}; }
    [[nodiscard]] std::vector<std::string> devices() const override { return {}; }
};

TEST(TrainGroups, AnErrorOfTheirOwnBearsTheirTag) {
    StartedDoors doors;
    BrokenLine line;
    Ports ports{doors.clock,   doors.pauses,  doors.files,  line,          doors.datasock,
                doors.streams, doors.notices, doors.sounds, doors.desktop, doors.transfers};
    Copy broken{doors.state, ports, doors.ini, doors.log, doors.timers};
    const auto tag_of_error = [&](void (*routine)(Copy&)) {
        try {
            routine(broken);
        } catch (const UnrecoverableError& error) {
            return error.tag;
        }
        return std::string("none");
    };
    EXPECT_EQ(tag_of_error(docfgroup), "docfgroup");
    EXPECT_EQ(tag_of_error(domaingroup), "domaingroup");
}

TEST(TrainGroups, AnErrorOfAGroupKeepsTheTagOfTheGroup) {
    StartedDoors doors;
    StationReadings r = readings();
    r.humidity.outdoor = 0;  // no dew point: the logarithm of 0
    try {
        doors.domain(write_train(r));
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "AF group");
    }
}

}  // namespace
}  // namespace nimbry
