#include "engine/control/verbs_records.h"

#include <gtest/gtest.h>

#include "tests/engine/control/recording_asker.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

class VerbsRecordsTest : public testing::Test {
protected:
    VerbsRecordsTest() : days(at(10, 5, 8, 59, 30)) { days.start(); }
    VerbStatus ask(const std::string& verb) {
        asker = {};
        auto status = VerbStatus::bad_usage;
        days.world.act([&] { status = answer_request(days.world.copy(), {verb}, asker); });
        return status;
    }
    WeatherDays days;
    RecordingAsker asker;
};

TEST_F(VerbsRecordsTest, ExtremesPrintsTodayAndYesterdayInTheirTexts) {
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    days.train(at(10, 5, 9, 0, 0));
    EXPECT_EQ(ask("extremes"), VerbStatus::done);
    EXPECT_EQ(asker.out,
              "Maximum Temperature\t+12.3 °C at 09:00\t+12.3 °C at 08:59\n"
              "Minimum Temperature\t+12.3 °C at 09:00\t+12.3 °C at 08:59\n"
              "Maximum Humidity\t54 % at 09:00\t54 % at 08:59\n"
              "Minimum Humidity\t54 % at 09:00\t54 % at 08:59\n"
              "Maximum Wind Speed\t15.1 km/h, 225° at 09:00\t15.1 km/h, 225° at 08:59\n"
              "Max. Peak Rain Rate\tnil\tnil\n"
              "Barometer Maximum\t1013 mB at 09:00\t1013 mB at 08:59\n"
              "Barometer Minimum\t1013 mB at 09:00\t1013 mB at 08:59\n"
              "Maximum Dew Point\t+3.3 °C at 09:00\t+3.3 °C at 08:59\n"
              "Minimum Dew Point\t+3.3 °C at 09:00\t+3.3 °C at 08:59\n"
              "Minimum Wind Chill\t+11.2 °C at 09:00\t+11.2 °C at 08:59\n"
              "Maximum Heat Index\t- No Valid Data -\t- No Valid Data -\n"
              "Maximum Indoor Temp\t+21.5 °C at 09:00\t+21.5 °C at 08:59\n"
              "Minimum Indoor Temp\t+21.5 °C at 09:00\t+21.5 °C at 08:59\n"
              "Rainfall\tnil\tnil\n"
              "Days Since rain\t1\t\n"
              "Last Rain Amount\t0\t\n"
              "Number of rain days\t0\t\n"
              "Total This Month\t0 mm\t\n");
}

TEST_F(VerbsRecordsTest, SummaryPrintsTheMonthInProgressAndWritesNothing) {
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    const auto before = days.world.files.names();
    days.world.files.forget_calls();
    EXPECT_EQ(ask("summary"), VerbStatus::done);
    EXPECT_TRUE(asker.out.starts_with("Nimbry monthly summary for the current month\n---")) << asker.out;
    EXPECT_NE(asker.out.find("\nMaximum temperature: +12.3 °C at 08:59:00 on 05 October\n"), std::string::npos);
    EXPECT_EQ(asker.out.find('\r'), std::string::npos);
    EXPECT_EQ(days.world.files.names(), before);
    for (const auto& call : days.world.files.calls()) EXPECT_EQ(call.operation, "read");
}

TEST_F(VerbsRecordsTest, SummaryIsRefusedBeforeTheFirstRow) {
    EXPECT_EQ(ask("summary"), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, std::vector<std::string>{"No almanac file has been created yet for this month"});
}

TEST_F(VerbsRecordsTest, ADamagedRowRefusesTheSummaryAndTheCopyGoesOn) {
    days.world.files.put("nbextreme.log", "1,Oct\r\n");
    EXPECT_EQ(ask("summary"), VerbStatus::failed);
    EXPECT_EQ(asker.complaints, std::vector<std::string>{"The almanac of this month has a damaged row"});
    EXPECT_FALSE(days.world.state().run.HaveError);
}

}  // namespace
}  // namespace nimbry::test
