#include "engine/station/sensor_faults.h"

#include <cctype>
#include <functional>
#include <string>
#include <vector>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

struct SensorCase {
    const char* what;
    Sensor sensor;
    std::function<void(StationReadings&)> breaks;
    const char* log;
    std::vector<Box*> (*boxes)(MainPanel&);
    SensorFault SensorFaults::*fault;
};

const std::vector<SensorCase> sensor_cases{
    {"wind, bit 2", Sensor::wind, [](StationReadings& s) { s.wind.fault_bits = 4; }, " A wind sensor error occurred",
     [](MainPanel& p) -> std::vector<Box*> {
         return {&p.Text2[6], &p.Text2[3], &p.Text2[7], &p.TxtWinDir, &p.TxtWindChill};
     },
     &SensorFaults::pewgerr},
    {"wind, bit 3", Sensor::wind, [](StationReadings& s) { s.wind.fault_bits = 8; }, " A wind sensor error occurred",
     [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[6]}; }, &SensorFaults::pewgerr},
    {"wind, a gust direction of 360", Sensor::wind, [](StationReadings& s) { s.wind.gust_direction = 360; },
     " A wind sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[7]}; },
     &SensorFaults::pewgerr},
    {"outdoor temperature", Sensor::outdoor_temperature, [](StationReadings& s) { s.temperature.outdoor_fault = true; },
     " An outside temperature sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[0]}; },
     &SensorFaults::peoterr},
    {"outdoor humidity", Sensor::outdoor_humidity, [](StationReadings& s) { s.humidity.outdoor_fault = true; },
     " An outside humidity sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[2]}; },
     &SensorFaults::peoherr},
    {"indoor humidity", Sensor::indoor_humidity, [](StationReadings& s) { s.humidity.indoor_fault = true; },
     " An inside humidity sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[9]}; },
     &SensorFaults::peiherr},
    {"indoor temperature", Sensor::indoor_temperature, [](StationReadings& s) { s.temperature.indoor_fault = true; },
     " An inside temperature sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[8]}; },
     &SensorFaults::peiterr},
    {"barometer, too high", Sensor::barometer, [](StationReadings& s) { s.barometer.hpa = 1050; },
     " A barometer sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[4]}; },
     &SensorFaults::pebarerr},
    {"barometer, too low", Sensor::barometer, [](StationReadings& s) { s.barometer.hpa = 795; },
     " A barometer sensor error occurred", [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[4]}; },
     &SensorFaults::pebarerr},
    {"rain", Sensor::rain, [](StationReadings& s) { s.rain.fault = true; }, " A rainfall sensor error occurred",
     [](MainPanel& p) -> std::vector<Box*> { return {&p.Text2[5]}; }, &SensorFaults::pernerr},
};

class SensorFaultTests : public Decoding, public testing::WithParamInterface<SensorCase> {
protected:
    [[nodiscard]] std::vector<std::string> texts() {
        std::vector<std::string> all;
        for (const Box* box : GetParam().boxes(panel)) all.push_back(box->text);
        return all;
    }
    [[nodiscard]] const SensorFault& fault() { return state.sensors.*GetParam().fault; }
    [[nodiscard]] int logged() {
        const std::string line = GetParam().log;
        int count = 0;
        for (const std::string& entry : world.log_lines())
            if (entry.size() > line.size() && entry.ends_with(line)) ++count;
        return count;
    }
    /// The test at its second strike, as it leaves the boxes before the cycle goes over them.
    void strike() {
        begin_train(state.sensors);
        (state.sensors.*GetParam().fault).raised = true;
        EXPECT_FALSE(sensor_sound(world.copy, GetParam().sensor));
    }
    void break_sensor() { GetParam().breaks(station); }
    void mend_sensor() { station = StationReadings{}; }
};

TEST_P(SensorFaultTests, OneDamagedFrameOnlyCostsTheReading) {
    train();
    const auto before = texts();
    break_sensor();
    train();
    EXPECT_TRUE(fault().raised);
    EXPECT_FALSE(fault().failed);
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(logged(), 0);
    EXPECT_TRUE(world.notices.windows.empty());
    mend_sensor();
    train();
    EXPECT_FALSE(fault().raised);
    EXPECT_EQ(texts(), before);
}

TEST_P(SensorFaultTests, TheSecondInARowIsLoggedAndShown) {
    train();
    break_sensor();
    train();
    train();
    EXPECT_FALSE(fault().raised);
    EXPECT_TRUE(fault().failed);
    EXPECT_EQ(logged(), 1);
    EXPECT_EQ(world.log_lines().back(), "05 Oct 2026 14:00:40" + std::string(GetParam().log));
    EXPECT_EQ(world.notices.windows, std::vector<std::string>{"NimbrySensor"});
    for (const Box* box : GetParam().boxes(panel)) EXPECT_EQ(box->text, "Error");
}

TEST_P(SensorFaultTests, AReportPaintsTheBoxesRedUntilTheColoursAreCleared) {
    break_sensor();
    train();
    strike();
    for (const Box* box : GetParam().boxes(panel)) {
        EXPECT_EQ(box->text, "Error");
        EXPECT_EQ(box->fore, colours::red);
    }
    clear_fault_colours(panel);
    for (const Box* box : GetParam().boxes(panel)) {
        EXPECT_EQ(box->text, "Error");
        EXPECT_EQ(box->fore, colours::black);
    }
}

TEST_P(SensorFaultTests, ALastingFaultActsAtEverySecondTrainAndIsLoggedOnce) {
    break_sensor();
    for (int n = 1; n <= 6; ++n) {
        SCOPED_TRACE(n);
        train();
        EXPECT_EQ(fault().raised, n % 2 == 1);
        EXPECT_EQ(world.notices.windows.size(), static_cast<std::size_t>(n / 2));
        EXPECT_EQ(logged(), n >= 2 ? 1 : 0);
    }
}

TEST_P(SensorFaultTests, ASoundReadingEndsItAndTakesTheRedBack) {
    break_sensor();
    train();
    strike();
    mend_sensor();
    train();
    EXPECT_FALSE(fault().failed);
    for (const Box* box : GetParam().boxes(panel)) {
        EXPECT_NE(box->text, "Error");
        EXPECT_EQ(box->fore, colours::black);
    }
    break_sensor();
    train();
    EXPECT_FALSE(fault().failed) << "one strike again";
}

TEST_P(SensorFaultTests, FaultsAlternatingWithSoundReadingsAreNeverReported) {
    for (int n = 0; n < 4; ++n) {
        break_sensor();
        train();
        mend_sensor();
        train();
    }
    EXPECT_EQ(logged(), 0);
    EXPECT_TRUE(world.notices.windows.empty());
}

TEST_P(SensorFaultTests, SilencedFaultsAreLoggedOnceAndShowNoWindow) {
    state.settings.ErrorPop = true;
    for (const bool cold_climate : {false, true}) {
        SCOPED_TRACE(cold_climate);
        state.settings.CCPop = cold_climate;
        break_sensor();
        for (int n = 0; n < 4; ++n) train();
        EXPECT_EQ(logged(), 1);
        EXPECT_TRUE(world.notices.windows.empty());
        EXPECT_EQ(GetParam().boxes(panel).front()->text, "Error");
    }
}

TEST_P(SensorFaultTests, AfterTheOnceFlagsWereClearedALastingFaultIsLoggedAgain) {
    break_sensor();
    train();
    train();
    clear_once_flags(state.sensors);
    train();
    train();
    EXPECT_EQ(logged(), 2);
}

TEST_P(SensorFaultTests, NothingIsTestedBeforeTheFirstCycle) {
    break_sensor();
    BareCopy fresh;
    fresh.train(station);
    EXPECT_FALSE((fresh.state.sensors.*GetParam().fault).raised);
    fresh.train(station);
    EXPECT_TRUE((fresh.state.sensors.*GetParam().fault).raised);
}

TEST_P(SensorFaultTests, BeforeTheFirstCycleEveryReadingIsTakenForSound) {
    break_sensor();
    train();
    state.run.fullystarted = false;
    begin_train(state.sensors);
    EXPECT_TRUE(sensor_sound(world.copy, GetParam().sensor));
    EXPECT_TRUE(state.sensors.sensorsok);
    EXPECT_TRUE(fault().raised) << "the flag is left as it was";
    EXPECT_EQ(logged(), 0);
}

TEST_P(SensorFaultTests, AskedAgainInTheSameFrameTheTestOnlyRepeatsItsAnswer) {
    break_sensor();
    train();
    EXPECT_FALSE(sensor_sound(world.copy, GetParam().sensor));
    EXPECT_TRUE(state.sensors.sensorsok) << "not reported in this frame";
    EXPECT_FALSE(sensor_sound(world.copy, GetParam().sensor));
    EXPECT_TRUE(fault().raised);
    EXPECT_EQ(logged(), 0);
    train();
    EXPECT_FALSE(sensor_sound(world.copy, GetParam().sensor));
    EXPECT_FALSE(state.sensors.sensorsok) << "reported in this frame";
    EXPECT_EQ(logged(), 1);
    mend_sensor();
    train();
    EXPECT_TRUE(sensor_sound(world.copy, GetParam().sensor));
    EXPECT_TRUE(state.sensors.sensorsok);
}

TEST_P(SensorFaultTests, WhereOnlyTheColdClimateIsSilencedALastingFaultIsLoggedEachTime) {
    state.settings.CCPop = true;
    break_sensor();
    for (int n = 0; n < 6; ++n) train();
    EXPECT_EQ(logged(), 3);
    EXPECT_EQ(world.notices.windows.size(), 3U);
}

std::string name_of(const testing::TestParamInfo<SensorCase>& sensor) {
    std::string name;
    for (const char c : std::string(sensor.param.what))
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
    return name;
}
INSTANTIATE_TEST_SUITE_P(EverySensor, SensorFaultTests, testing::ValuesIn(sensor_cases), name_of);

}  // namespace
}  // namespace nimbry::test
