#include "engine/records/extremes_display.h"

#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/records/almanac_file.h"
#include "engine/records/extremes_texts.h"

namespace nimbry {
namespace {

const DayExtremes fresh;

// The boxes of one column.
struct Column {
    Box &tempmax, &tempmin, &hummax, &hummin, &gustmax, &rainmax, &barmax, &barmin;
    Box &maxdew, &mindew, &minwc, &maxhi, &maxintemp, &minintemp;
};

Column today(WeatherState& state) {
    MainPanel& p = state.panel;
    AdditionalPanel& a = state.additional;
    return {p.TxtTempMax, p.TxtTempMin, p.TxtHumMax, p.TxtHumMin, p.TxtGustMax, p.TxtRainMax,   p.TxtBarMax,
            p.TxtBarMin,  a.txtMaxDew,  a.txtMinDew, a.txtMinWC,  a.txtMaxHI,   a.txtMaxInTemp, a.txtMinInTemp};
}

Column yesterday(WeatherState& state) {
    MainPanel& p = state.panel;
    AdditionalPanel& a = state.additional;
    return {p.TxtYTempMax, p.TxtYTempMin, p.TxtYHumMax, p.TxtYHumMin, p.TxtYGustMax, p.TxtYRainMax,   p.TxtYBarMax,
            p.TxtYBarMin,  a.txtYMaxDew,  a.txtYMinDew, a.txtYMinWC,  a.txtYMaxHI,   a.txtYMaxInTemp, a.txtYMinInTemp};
}

template <class Do>
void for_each_box(const Column& c, Do&& act) {
    for (Box* box : {&c.tempmax, &c.tempmin, &c.hummax, &c.hummin, &c.gustmax, &c.rainmax, &c.barmax, &c.barmin,
                     &c.maxdew, &c.mindew, &c.minwc, &c.maxhi, &c.maxintemp, &c.minintemp})
        act(*box);
}

// One column's records from the fields as they are held.
class Writer {
public:
    Writer(const WeatherState& state, const Column& column)
        : day_(state.records.day), units_(state.units), column_(column) {}

    void temperature() {
        column_.tempmax.text = temperature_record(day_.maxtemp, fresh.maxtemp, day_.maxtemptime, units_);
        column_.tempmin.text = temperature_record(day_.mintemp, fresh.mintemp, day_.mintemptime, units_);
    }
    void dew_point() {
        column_.maxdew.text = temperature_record(day_.maxdew, fresh.maxdew, day_.maxdewtime, units_);
        column_.mindew.text = temperature_record(day_.mindew, fresh.mindew, day_.mindewtime, units_);
    }
    void heat_index() { column_.maxhi.text = temperature_record(day_.maxhi, fresh.maxhi, day_.maxhitime, units_); }
    void chill() { column_.minwc.text = temperature_record(day_.minwc, fresh.minwc, day_.minwctime, units_); }
    void humidity() {
        column_.hummax.text = humidity_record(day_.maxhum, fresh.maxhum, day_.maxhumtime);
        column_.hummin.text = humidity_record(day_.minhum, fresh.minhum, day_.minhumtime);
    }
    void gust() { column_.gustmax.text = gust_record(day_.maxwind, day_.maxwindir, day_.maxwindtime, units_); }
    void rain_rate() { column_.rainmax.text = rain_rate_record(day_.maxrain, day_.maxraintime, units_); }
    void barometer() {
        column_.barmax.text = barometer_record(day_.maxbar, fresh.maxbar, day_.maxbartime, units_);
        column_.barmin.text = barometer_record(day_.minbar, fresh.minbar, day_.minbartime, units_);
    }
    void indoor() {
        column_.maxintemp.text = temperature_record(day_.maxintemp, fresh.maxintemp, day_.maxintemptime, units_);
        column_.minintemp.text = temperature_record(day_.minintemp, fresh.minintemp, day_.minintemptime, units_);
    }
    void all() {
        temperature();
        dew_point();
        heat_index();
        chill();
        humidity();
        gust();
        rain_rate();
        barometer();
        indoor();
    }

private:
    const DayExtremes& day_;
    const Units& units_;
    const Column& column_;
};

template <class Part>
void write_today(WeatherState& state, Part part) {
    const Column column = today(state);
    (Writer(state, column).*part)();
}

void fill_yesterday(WeatherState& state, const char* text) {
    state.records.yesterday = fresh;
    state.records.rainyesterday.reset();
    for_each_box(yesterday(state), [&](Box& box) { box.text = text; });
    state.panel.TxtRainYest.text = " -- ";
}

}  // namespace

void show_today(WeatherState& state) {
    write_today(state, &Writer::all);
    show_rain_days(state);
}
void show_today_temperature(WeatherState& state) {
    write_today(state, &Writer::temperature);
}
void show_today_dew_point(WeatherState& state) {
    write_today(state, &Writer::dew_point);
}
void show_today_heat_index(WeatherState& state) {
    write_today(state, &Writer::heat_index);
}
void show_today_chill(WeatherState& state) {
    write_today(state, &Writer::chill);
}
void show_today_humidity(WeatherState& state) {
    write_today(state, &Writer::humidity);
}
void show_today_gust(WeatherState& state) {
    write_today(state, &Writer::gust);
}
void show_today_rain_rate(WeatherState& state) {
    write_today(state, &Writer::rain_rate);
}
void show_today_barometer(WeatherState& state) {
    write_today(state, &Writer::barometer);
}
void show_today_indoor(WeatherState& state) {
    write_today(state, &Writer::indoor);
}

void blank_today(WeatherState& state) {
    const Column column = today(state);
    for_each_box(column, [](Box& box) { box.text.clear(); });
    column.maxhi.text = "- No Valid Data -";
    state.panel.TxtRainToday.text.clear();
}

void ResYesterday(WeatherState& state) {
    const Column column = yesterday(state);
    Writer(state, column).all();
    state.records.yesterday = state.records.day;
    state.records.rainyesterday = state.rain.raintoday;
    const double rain = Round(static_cast<double>(state.rain.raintoday) * state.units.rcorr, 2);
    state.panel.TxtRainYest.text = rain == 0 ? " nil" : with_unit(rain, state.units.rain_text);
}

void show_no_yesterday(WeatherState& state) {
    fill_yesterday(state, "- No Data Available -");
}

void show_yesterday_to_come(WeatherState& state) {
    fill_yesterday(state, "- No data available yet -");
}

void show_monthly_rain(WeatherState& state, const Files& files) {
    std::string almanac;
    files.read(std::string(almanac_log), almanac);
    const AlmanacRain rain = almanac_rain(almanac);
    state.additional.txtRainDays.text = numtext(rain.days);
    state.additional.txtMnthTotal.text = numtext(Round(rain.total, 2)) + " " + state.units.rain_text;
}

void show_rain_days(WeatherState& state) {
    state.additional.txtDSR.text = numtext(state.records.DaySinceRain);
    state.additional.txtAmtLastRain.text = numtext(state.records.LastRain) + " " + state.units.rain_text;
}

}  // namespace nimbry
