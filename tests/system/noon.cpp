#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace nimbry::system_test {
namespace {

// The copies and their trains go by the machine's clock. A run over nine o'clock or over the last midnight of a month
// would see a changeover in the middle, so it is always noon here, in a zone of its own.
class Noon : public testing::Environment {
public:
    void SetUp() override {
        const std::time_t now = std::time(nullptr);
        std::tm utc{};
        gmtime_r(&now, &utc);
        // As POSIX has it: hours west of Greenwich.
        setenv("TZ", ("NOON" + std::to_string(utc.tm_hour - 12)).c_str(), 1);
        tzset();
    }
};

[[maybe_unused]] const testing::Environment* const noon = testing::AddGlobalTestEnvironment(new Noon);

}  // namespace
}  // namespace nimbry::system_test
