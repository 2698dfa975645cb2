#include "platform/system_clock.h"

#include <ctime>

namespace nimbry::platform {

namespace {

CivilTime from_fields(const std::tm& fields) {
    using namespace std::chrono;
    const year_month_day date{year(fields.tm_year + 1900), month(static_cast<unsigned>(fields.tm_mon) + 1),
                              day(static_cast<unsigned>(fields.tm_mday))};
    return local_days(date) + hours(fields.tm_hour) + minutes(fields.tm_min) + seconds(fields.tm_sec);
}

}  // namespace

CivilTime civil_time(std::chrono::system_clock::time_point moment) {
    // The C library's zone, since the C++ one of this compiler has no time zones.
    const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
    std::tm fields{};
    localtime_r(&seconds, &fields);
    return from_fields(fields);
}

CivilTime SystemClock::computer_time() const {
    return civil_time(std::chrono::system_clock::now());
}

double SystemClock::seconds_of_day() const {
    using namespace std::chrono;
    const system_clock::time_point now = system_clock::now();
    const CivilTime civil = civil_time(now);
    const duration<double> fraction = now - floor<seconds>(now);
    return duration<double>(civil - floor<days>(civil)).count() + fraction.count();
}

CivilTime SystemClock::utc_time() const {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return CivilTime(now.time_since_epoch());
}

Instant SystemClock::monotonic() const {
    const auto since_boot = std::chrono::steady_clock::now().time_since_epoch();
    return Instant(std::chrono::floor<MonotonicClock::duration>(since_boot));
}

}  // namespace nimbry::platform
