#pragma once

#include <string>

namespace nimbry {

/// The sun's times in words and figures, as tags print them; refreshed in every cycle by refresh_sun_texts()
/// (sun/sun_texts.h). Times are "hh:mm:ss" in the computer's zone. Without a location `websunrise` and `websunset` are
/// the sentences that say so, and everything else is empty.
struct SunState {
    // Before or after the computer's present time: " was " or " will be ".
    std::string risewasis, setwasis;    ///< today's sunrise and sunset
    std::string trisewasis, tsetwasis;  ///< tomorrow's

    std::string websunrise, websunset;    ///< today's: "at 06:09:12"
    std::string twebsunrise, twebsunset;  ///< tomorrow's: " will be at 06:07:58"
    std::string webtwstart, webtwend;     ///< today's civil twilight: "started at 05:43:30", "will end at 19:29:22"
    std::string websolarnoon;             ///< today's solar noon, the time alone

    std::string numwebsunrise, numwebsunset;    ///< today's, the time alone
    std::string numtwebsunrise, numtwebsunset;  ///< tomorrow's, the time alone
    std::string nwebtwstart, nwebtwend;         ///< civil twilight, the time alone

    std::string webdaylength;  ///< sunrise to sunset: "12 hours 54 minutes"
    std::string webvislight;   ///< the same with civil twilight
};

}  // namespace nimbry
