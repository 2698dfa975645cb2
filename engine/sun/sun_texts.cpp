#include "engine/sun/sun_texts.h"

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/sun/location.h"
#include "engine/sun/sunrise.h"

namespace nimbry {
namespace {

using std::chrono::floor;
using std::chrono::minutes;

/// "05 October 2026".
std::string long_date(std::chrono::local_days day) {
    const DateParts parts = parts_of(day);
    return padded(parts.day, 2) + " " + full_month_name(parts.month) + " " + padded(parts.year, 4);
}

/// "12 hours 54 minutes": whole ones, the rest cut off.
std::string length_text(double hours) {
    const int whole = static_cast<int>(hours);
    const int rest = static_cast<int>((hours - whole) * 60);
    return numtext(whole) + " hours " + numtext(rest) + " minutes";
}

std::string was_or_will_be(CivilTime event, CivilTime now) {
    return event < now ? " was " : " will be ";
}

/// The events of one day, in the computer's zone.
struct SunDay {
    CivilTime rise, set, noon;
    double length = 0;  ///< hours
};

/// The sun of a place under the computer's clock.
class PlaceOfSun {
public:
    PlaceOfSun(const Location& place, const Clock& clock) {
        sun_.Latitude = place.latitude;
        sun_.Longitude = -place.longitude;
        // The two clocks are read one after the other: a second may have changed between them, a minute of offset has
        // not. The present offset holds the hour of summer time already, so DaySavings stays off.
        const auto ahead = std::chrono::round<minutes>(clock.computer_time() - clock.utc_time());
        sun_.TimeZone = -static_cast<double>(ahead.count()) / 60;
    }

    /// Nothing for a place beyond the poles, of which there is no sun to work out.
    std::optional<SunDay> on(std::chrono::local_days day, bool twilight = false) {
        sun_.DateDay = day;
        sun_.twilight = twilight;
        sun_.CalculateSun();
        if (!sun_.Sunrise()) return {};
        return SunDay{*sun_.Sunrise(), *sun_.Sunset(), *sun_.SolarNoon(), sun_.daylength()};
    }

private:
    clsSunrise sun_;
};

void write_today(Copy& copy, const SunDay& sun, const std::string& date, CivilTime now) {
    SunState& state = copy.state.sun;
    state.risewasis = was_or_will_be(sun.rise, now);
    state.setwasis = was_or_will_be(sun.set, now);
    state.numwebsunrise = clock_text(sun.rise);
    state.numwebsunset = clock_text(sun.set);
    state.websunrise = "at " + state.numwebsunrise;
    state.websunset = "at " + state.numwebsunset;
    state.websolarnoon = clock_text(sun.noon);
    state.webdaylength = length_text(sun.length);

    AdditionalPanel& panel = copy.state.additional;
    panel.TxtSunrise.text = "Sunrise today (" + date + ")" + state.risewasis + state.websunrise;
    panel.TxtSunset.text = "and Sunset" + state.setwasis + state.websunset;
    panel.TxtSunrise.balloon = "Sunrise today" + state.risewasis + "at\r\n" + state.numwebsunrise;
    panel.TxtSunset.balloon = "Sunset today" + state.setwasis + "at\r\n" + state.numwebsunset;
    panel.txtSolarNoon.text = state.websolarnoon;
    panel.txtDayLength.text = state.webdaylength;
}

void write_tomorrow(Copy& copy, const SunDay& sun, const std::string& date, CivilTime now, bool sun_is_up) {
    SunState& state = copy.state.sun;
    state.trisewasis = was_or_will_be(sun.rise, now);
    state.tsetwasis = was_or_will_be(sun.set, now);
    state.numtwebsunrise = clock_text(sun.rise);
    state.numtwebsunset = clock_text(sun.set);
    state.twebsunrise = state.trisewasis + "at " + state.numtwebsunrise;
    state.twebsunset = state.tsetwasis + "at " + state.numtwebsunset;

    AdditionalPanel& panel = copy.state.additional;
    panel.TxtSunriseTom.text =
        sun_is_up ? "Sunrise tomorrow (" + date + ") will be at " + state.numtwebsunrise : std::string();
    panel.TxtSunsetTom.text = sun_is_up ? "and Sunset will be at " + state.numtwebsunset : std::string();
}

void write_twilight(Copy& copy, const SunDay& sun, const std::string& date, CivilTime now) {
    SunState& state = copy.state.sun;
    state.nwebtwstart = clock_text(sun.rise);
    state.nwebtwend = clock_text(sun.set);
    state.webtwstart = (sun.rise < now ? "started at " : "will start at ") + state.nwebtwstart;
    state.webtwend = (sun.set < now ? "ended at " : "will end at ") + state.nwebtwend;
    state.webvislight = length_text(sun.length);

    AdditionalPanel& panel = copy.state.additional;
    panel.txtTwiStart.text = "Civil twilight today (" + date + ") " + state.webtwstart;
    panel.txtTwiEnd.text = "Civil twilight today (" + date + ") " + state.webtwend;
    panel.txtVisLight.text = state.webvislight;
}

/// Every box of the sun group.
template <class Do>
void each_sun_box(AdditionalPanel& panel, Do&& what) {
    for (Box* box : {&panel.TxtSunrise, &panel.TxtSunset, &panel.TxtSunriseTom, &panel.TxtSunsetTom, &panel.txtTwiStart,
                     &panel.txtTwiEnd, &panel.txtSolarNoon, &panel.txtDayLength, &panel.txtVisLight})
        what(*box);
}

void write_no_location(Copy& copy) {
    AdditionalPanel& panel = copy.state.additional;
    each_sun_box(panel, [](Box& box) {
        box.text.clear();
        box.balloon.clear();
    });
    SunState& state = copy.state.sun;
    state = SunState{};
    state.websunrise = panel.TxtSunrise.text = "Can't calculate Sunrise as no location entered";
    state.websunset = panel.TxtSunset.text = "Can't calculate Sunset as no location entered";
}

}  // namespace

void refresh_sun_texts(Copy& copy) {
    const MainSettings& settings = copy.state.settings;
    const std::optional<Location> place = entered_location(settings.Latitude, settings.Longitude);
    if (!place) return write_no_location(copy);

    const Clock& clock = copy.ports.clock;
    const CivilTime now = clock.computer_time();
    const auto today = floor<std::chrono::days>(now);
    const auto tomorrow = today + std::chrono::days{1};
    PlaceOfSun sun(*place, clock);
    const std::optional<SunDay> day = sun.on(today);
    if (!day) return write_no_location(copy);

    write_today(copy, *day, long_date(today), now);
    write_tomorrow(copy, *sun.on(tomorrow), long_date(tomorrow), now, day->rise < now);
    write_twilight(copy, *sun.on(today, true), long_date(today), now);
}

void show_sun_picture(Copy& copy) {
    AdditionalPanel& panel = copy.state.additional;
    const bool known = !copy.state.sun.numwebsunrise.empty();
    each_sun_box(panel, [&](Box& box) { box.visible = known; });
    panel.Picture1.visible = known;
    panel.lblNoSun.visible = !known;
}

}  // namespace nimbry
