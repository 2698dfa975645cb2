#include "engine/records/save_extremes.h"

#include "engine/core/run_time_error.h"
#include "engine/records/day_files.h"

namespace nimbry {

void SaveExtremes(Copy& copy) {
    copy.state.run.tdaysaving.set();
    const BusyFlag::Held saving(copy.state.run.tdaysaving);
    const WeatherState& state = copy.state;
    const RecordsState& records = state.records;
    if (state.log_fields.logdate.empty() || !state.readings.dtvar || records.day.outdoor_record_missing()) return;
    const CivilTime stamp = *state.readings.dtvar + std::chrono::seconds{10};
    const TodayRecord today{records.day, state.rain.raintoday, records.DaySinceRain, records.LastRain};
    require(copy.ports.files.rewrite(std::string(today_file), today_text(stamp, today)));
}

}  // namespace nimbry
