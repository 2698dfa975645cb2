// Any bytes as the almanac of the month. The laws: it is read as at most 33 rows, or refused for a damaged one; its
// summary in any units, and the page of it, come out or end with an error of that routine alone; and the day's row is
// added behind what was sound, so that the next reader finds one row more.
#include <algorithm>
#include <string>
#include <tuple>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/records/almanac.h"
#include "engine/records/almanac_file.h"
#include "engine/records/auto_report.h"
#include "engine/records/viewers.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/bare_copy.h"

namespace {

using namespace nimbry;
using fuzz::expect;

/// A copy in the middle of a day with readings, in units that the input chooses.
struct RunningDay : test::BareCopy {
    RunningDay(int units, const std::string& text) {
        state.settings.fTempF = (units & 1) != 0;
        state.settings.fTempC = !state.settings.fTempF;
        state.settings.fBarinhg = (units & 2) != 0;
        state.settings.fRainin = (units & 4) != 0;
        state.settings.fWindms = (units & 8) != 0;
        state.units = units_from(state.settings);
        state.settings.tmidnight = (units & 16) != 0;
        state.settings.tnineam = !state.settings.tmidnight;
        state.run.fullystarted = true;
        state.readings.dtvar = clock.computer_time();
        state.readings.YesterDay = 4;
        state.log_fields.logmonth = "Oct";
        StationReadings readings;
        readings.clock = station_moment(clock.computer_time());
        train(readings);
        files.put(std::string(almanac_log), text);
        files.put("nimbrysummarytemplate.html", "<p>~~SUMMAXTEMP~~ ~~SUBRAINTOT~~ ~~SUBPERCOVD~~</p>\r\n");
    }
    [[nodiscard]] std::string text() const { return files.contents(std::string(almanac_log)); }
};

void check_reading(const std::string& text) {
    const int counted = count_almanac_rows(text);
    try {
        const Almanac almanac = read_almanac(text, DayEnd::nine);
        expect(almanac.rows.size() == std::min<std::size_t>(static_cast<std::size_t>(counted), Almanac::most_rows));
    } catch (const RunTimeError& error) {
        expect(error.number == ErrorNumber::index && counted > 0);
    }
    const AlmanacRain rain = almanac_rain(text);
    expect(rain.days >= 0 && rain.days <= counted && rain.total >= 0);
    const std::size_t sound = sound_length(text);
    expect(sound <= text.size() && sound_length(text.substr(0, sound)) == sound);
}

/// The three ways to a summary.
template <class Work>
void summarise(Work work) {
    try {
        work();
    } catch (const UnrecoverableError& error) {
        expect(error.tag == "alanalyse");
        expect(error.number == ErrorNumber::index || error.number == ErrorNumber::overflow);
    }
}

void check_day_end(int units, const std::string& text) {
    RunningDay day(units, text);
    const std::string sound = text.substr(0, sound_length(text));
    almanac(day.copy);
    // A month with more rows than days is archived at once.
    const std::string archived = day.files.contents("alSep26.csv");
    const std::string after = archived.empty() ? day.text() : archived;
    expect(after.starts_with(sound));
    expect(count_almanac_rows(after) == count_almanac_rows(sound) + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int units = input.next();
    const std::string text = input.rest();
    check_reading(text);
    {
        RunningDay day(units, text);
        day.files.put("alOct26.csv", text);
        summarise([&] { std::ignore = mnuAutoReport(day.copy); });
        summarise([&] { std::ignore = mnuAlMonth(day.copy, "alOct26.csv"); });
        summarise([&] { AutoGenreport(day.copy); });
    }
    check_day_end(units, text);
    return 0;
}
