#pragma once

#include <chrono>

#include "engine/derived/dates.h"
#include "engine/records/extremes_display.h"
#include "engine/reports/resolvtag.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {

/// 21 October 2026, 14:05:07 by the station and the computer, in Sydney (UTC 03:05:07); degrees C, km/h, hPa, mm.
inline constexpr CivilTime october_afternoon = std::chrono::local_days{std::chrono::October / 21 / 2026} +
                                               std::chrono::hours{14} + std::chrono::minutes{5} +
                                               std::chrono::seconds{7};

/// A copy at that moment that has received nothing and whose record of the day is empty.
struct UnsetState : BareCopy {
    UnsetState() {
        clock.set_computer_time(october_afternoon);
        clock.set_zone(std::chrono::hours{11});
        state.settings.fBarhpa = true;
        state.units = units_from(state.settings);
        blank_today(state);
        show_no_yesterday(state);
        state.settings.tnineam = false;
        refresh();
    }

    /// What a generation does before it asks for tags.
    void refresh() { refresh_tag_sources(copy); }

    [[nodiscard]] std::string tag(const std::string& name) { return resolvtag(copy, "~~" + name + "~~"); }
};

/// The same after a day of sound readings.
struct KnownState : UnsetState {
    KnownState() {
        settle_in();
        state.run.fullystarted = true;
        state.run.firstrun = false;
        state.rain.rainatchange = 116;
        station = readings();
        station.wind.gust_ms = 6.2;
        train(station);
        station.wind.gust_ms = 5.4;
        train(station);
        keep_records();
        sample_the_rest();
        refresh();
    }

    /// Two more trains in which every sensor fails: the second reports them.
    void fail_every_sensor() {
        station.humidity.indoor_fault = station.humidity.outdoor_fault = true;
        station.temperature.indoor_fault = station.temperature.outdoor_fault = true;
        station.barometer.hpa = 1200;
        station.rain.fault = true;
        station.wind.fault_bits = 4;
        train(station);
        train(station);
        sample_the_rest();
        refresh();
    }

    StationReadings station;

private:
    [[nodiscard]] static StationReadings readings() {
        StationReadings now;
        now.clock = station_moment(october_afternoon);
        now.humidity = {
            .indoor = 45, .outdoor = 54, .high = 96, .low = 31, .high_at = {6, 0, 12, 10}, .low_at = {14, 45, 9, 10}};
        now.temperature = {.indoor = 21.4,
                           .outdoor = 8.1,
                           .high = 31.5,
                           .low = -2.1,
                           .high_at = {15, 10, 9, 10},
                           .low_at = {5, 20, 18, 10}};
        now.barometer = {.hpa = 1013, .trend = 2, .outlook = 4};
        now.rain = {.rate_mm = 2, .total_mm = 123, .reset_at = {9, 30, 5, 10}};
        now.wind.average_ms = 3.4;
        now.wind.gust_direction = 123;
        now.wind.average_direction = 98;
        now.wind.record_ms = 17.4;
        now.wind.record_direction = 247;
        now.wind.record_at = {17, 33, 14, 10};
        return now;
    }

    void settle_in() {
        state.settings.tnineam = true;
        state.settings.Latitude = "-33.8568";
        state.settings.Longitude = "151.2093";
        state.settings.WebComment = "<p>Good weather today.</p>";
        state.settings.WebComment2 = "<p>Next meeting on Friday.</p>";
        state.publish.NimbryFTPSetup.MailTitle = "Weather at Home";
        files.put("webfiletag.txt", "<p>News of\r\n the club</p>\r\n");
        files.put("rnslm.dat", "21 Oct 2026 00:00:04\r\n 116 \r\n");
    }

    void keep_records() {
        DayExtremes& day = state.records.day;
        day.maxtemp = 12.3F, day.maxtemptime = "13:02", day.mintemp = -0.5F, day.mintemptime = "05:40";
        day.maxintemp = 22.1F, day.maxintemptime = "12:10", day.minintemp = 19, day.minintemptime = "06:00";
        day.maxhum = 81, day.maxhumtime = "06:10", day.minhum = 40, day.minhumtime = "14:00";
        day.maxwind = 9.8F, day.maxwindtime = "11:02", day.maxwindir = "270\xB0";
        day.maxbar = 1015, day.maxbartime = "09:30", day.minbar = 1009, day.minbartime = "03:15";
        day.maxrain = 4, day.maxraintime = "12:40";
        day.maxdew = 3.1F, day.maxdewtime = "13:02", day.mindew = -2.4F, day.mindewtime = "05:40";
        day.minwc = -3.2F, day.minwctime = "05:45", day.maxhi = DayExtremes{}.maxhi;
        state.records.DaySinceRain = 3;
        state.records.LastRain = 2.5F;
        show_today(state);
    }

    // What other rooms write: the last hour, yesterday and the sun.
    void sample_the_rest() {
        state.rain.LastHourSum = 2;
        state.panel.TxtRainLH.text = " 2 mm";
        state.panel.TxtWindGLH.text = "35.3 km/h";

        MainPanel& panel = state.panel;
        panel.TxtRainYest.text = " 1 mm";
        panel.TxtYTempMax.text = "+15.2 \260C at 14:20", panel.TxtYTempMin.text = "+1.4 \260C at 05:55";
        panel.TxtYHumMax.text = "88 % at 06:30", panel.TxtYHumMin.text = "43 % at 15:10";
        panel.TxtYGustMax.text = " 41.4 km/h, 225\260 at 16:45", panel.TxtYRainMax.text = " 1 mm/hour at 18:15";
        panel.TxtYBarMax.text = " 1018 hPa at 10:05", panel.TxtYBarMin.text = " 1012 hPa at 23:50";
        AdditionalPanel& additional = state.additional;
        additional.txtYMaxDew.text = "+5.2 \260C at 12:30", additional.txtYMinDew.text = "-1.1 \260C at 05:50";
        additional.txtYMinWC.text = "-0.8 \260C at 05:52", additional.txtYMaxHI.text = "- No Valid Data -";
        additional.txtYMaxInTemp.text = "+23 \260C at 18:40", additional.txtYMinInTemp.text = "+18.7 \260C at 06:15";

        SunState& sun = state.sun;
        sun.numwebsunrise = "06:09:12", sun.numwebsunset = "19:03:40";
        sun.websunrise = "at 06:09:12", sun.websunset = "at 19:03:40";
        sun.numtwebsunrise = "06:07:58", sun.numtwebsunset = "19:04:31";
        sun.twebsunrise = " will be at 06:07:58", sun.twebsunset = " will be at 19:04:31";
        sun.nwebtwstart = "05:43:30", sun.nwebtwend = "19:29:22";
        sun.webtwstart = "started at 05:43:30", sun.webtwend = "will end at 19:29:22";
        sun.websolarnoon = "12:36:26";
        sun.webvislight = "13 hours 45 minutes", sun.webdaylength = "12 hours 54 minutes";
    }
};

}  // namespace nimbry::test
