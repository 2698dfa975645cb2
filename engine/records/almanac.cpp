#include "engine/records/almanac.h"

#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/publish/local_save.h"
#include "engine/records/almanac_roll.h"
#include "engine/records/auto_report.h"
#include "engine/records/do_changeover.h"
#include "engine/records/extremes_display.h"
#include "engine/records/record_step.h"
#include "engine/records/record_units.h"
#include "engine/records/save_extremes.h"

namespace nimbry {
namespace {

// The blank before MIN WIND CHILL TIME is part of the line.
constexpr std::string_view columns =
    "DATE,MONTH,MAX TEMPERATURE,MAX TEMP TIME,MIN TEMPERATURE,MIN TEMP TIME,MAX HUMIDITY,MAX HUMIDITY TIME,"
    "MIN HUMIDITY,MIN HUMIDITY TIME,MAX DEWPOINT,MAX DEWPOINT TIME,MIN DEWPOINT,MIN DEWPOINT TIME,MAX INDOOR TEMP,"
    "MAX INDOOR TEMP TIME,MIN INDOOR TEMP,MIN INDOOR TEMP TIME,MIN WIND CHILL, MIN WIND CHILL TIME,MAX HEAT INDEX,"
    "MAX HEAT INDEX TIME,MAX PEAK RAINFALL RATE,MAX PEAK RAINFALL RATE TIME,MAX BAROMETER (SEA),MAX BAROMETER TIME,"
    "MIN BAROMETER (SEA),MIN BAROMETER TIME,MAX WIND (GUST),MAX WIND GUST TIME,MAX WIND GUST DIRECTION,"
    "TOTAL RAINFALL FOR LAST 24 HOURS,DAYS SINCE RAIN,LAST RAIN AMOUNT";

std::string_view cotime(const MainSettings& settings) {
    switch (selected_day_end(settings)) {
        case DayEnd::midnight: return "Midnight";
        case DayEnd::nine: return "9.00am";
        case DayEnd::ten: break;
    }
    return "10.00am";
}

std::string hundredths(float value, double factor) {
    return numtext(scaled(value, factor, 2));
}

std::string gust(float ms, double factor) {
    const double speed = scaled(ms, factor, 1);
    return speed < calm_below ? "0" : numtext(speed);
}

std::string rain_of_row(const WeatherState& state) {
    return hundredths(state.rain.raintoday, state.units.rcorr);
}

// A dry day counts up; a day of rain, or of a counter that was reset, starts the count anew.
void count_dry_days(Copy& copy) {
    WeatherState& state = copy.state;
    const double rain = Val(rain_of_row(state));
    if (rain == 0) {
        ++state.records.DaySinceRain;
        state.additional.txtDSR.text = numtext(state.records.DaySinceRain);
    } else {
        state.records.DaySinceRain = 0;
        state.records.LastRain = static_cast<float>(rain);
        state.additional.txtAmtLastRain.text = with_unit(rain, state.units.rain_text);
    }
    SaveExtremes(copy);
}

void append_row(Copy& copy) {
    WeatherState& state = copy.state;
    RecordsState& records = state.records;
    const std::string date = records.row_date.empty() ? numtext(state.readings.YesterDay) : records.row_date;
    const std::string month = records.row_month.empty() ? state.log_fields.logmonth : records.row_month;
    records.row_date.clear();
    records.row_month.clear();
    const std::string name(almanac_log);
    require(copy.ports.files.append(name, almanac_row(state, date, month)));
    require(copy.ports.files.sync(name));
}

void make_if_missing(Copy& copy) {
    const std::string name(almanac_log);
    if (!copy.ports.files.exists(name)) require(copy.ports.files.append(name, almanac_head(copy.state.settings)));
}

// The row to come begins a line of its own. A torn row goes: its day is in the backup.
void end_last_line(Copy& copy) {
    const std::string name(almanac_log);
    std::string text;
    require(copy.ports.files.read(name, text));
    const std::size_t sound = sound_length(text);
    if (sound < text.size()) {
        require(copy.ports.files.rewrite(name, text.substr(0, sound)));
    } else if (!text.ends_with('\n')) {
        require(copy.ports.files.append(name, "\r\n"));
    }
}

void back_up_almanac(Copy& copy) {
    const std::string backup = "nbextreme.bak";
    back_up(copy, std::string(almanac_log), backup);
    if (copy.ports.files.exists(backup)) require(copy.ports.files.sync(backup));
}

void archive(Copy& copy) {
    copy.state.records.alarchiving = true;
    alRoll(copy);
    if (copy.state.records.alarchiving) AutoGenreport(copy);
}

}  // namespace

std::string almanac_head(const MainSettings& settings) {
    return "This is the Nimbry raw almanac file of daily extremes.\r\n\r\nThis file used " +
           std::string(cotime(settings)) +
           " changeover times\r\nEach entry details the extreme conditions for the 24 hours ENDING at the changeover "
           "time on the date shown for that entry.\r\n\r\n\r\n" +
           std::string(columns) + "\r\n\r\n";
}

std::string almanac_row(const WeatherState& state, const std::string& date, const std::string& month) {
    const DayExtremes& d = state.records.day;
    const Units& u = state.units;
    const bool heat = d.maxhi != DayExtremes{}.maxhi;
    // The degree sign of the bearing stays behind.
    const std::string bearing = d.maxwindir.substr(0, d.maxwindir.empty() ? 0 : d.maxwindir.size() - 1);
    std::string row = date + "," + month;
    for (const std::string& field : {signed_temperature(d.maxtemp, u),
                                     d.maxtemptime,
                                     signed_temperature(d.mintemp, u),
                                     d.mintemptime,
                                     numtext(d.maxhum),
                                     d.maxhumtime,
                                     numtext(d.minhum),
                                     d.minhumtime,
                                     signed_temperature(d.maxdew, u),
                                     d.maxdewtime,
                                     signed_temperature(d.mindew, u),
                                     d.mindewtime,
                                     signed_temperature(d.maxintemp, u),
                                     d.maxintemptime,
                                     signed_temperature(d.minintemp, u),
                                     d.minintemptime,
                                     signed_temperature(d.minwc, u),
                                     d.minwctime,
                                     heat ? signed_temperature(d.maxhi, u) : std::string("-999"),
                                     heat ? d.maxhitime : std::string("00:00"),
                                     hundredths(d.maxrain, u.rcorr),
                                     d.maxraintime,
                                     hundredths(d.maxbar, u.bcorr),
                                     d.maxbartime,
                                     hundredths(d.minbar, u.bcorr),
                                     d.minbartime,
                                     gust(d.maxwind, u.wcorr),
                                     d.maxwindtime,
                                     bearing,
                                     rain_of_row(state),
                                     numtext(state.records.DaySinceRain),
                                     numtext(state.records.LastRain)})
        row.append(",").append(field);
    return row.append("\r\n");
}

void almanac(Copy& copy) {
    const RunState& run = copy.state.run;
    if (!run.fullystarted || run.DuplicateError || run.HaveError) return;
    tagged("almanac", [&] {
        record_step(copy, [&] { back_up_almanac(copy); });
        record_step(copy, [&] {
            make_if_missing(copy);
            end_last_line(copy);
        });
        record_step(copy, [&] { count_dry_days(copy); });
        record_step(copy, [&] { append_row(copy); });
        record_step(copy, [&] { copy_to_local(copy, almanac_log); });
        record_step(copy, [&] { archive(copy); });
        show_monthly_rain(copy.state, copy.ports.files);
        copy.state.run.DuplicateError = false;
    });
}

}  // namespace nimbry
