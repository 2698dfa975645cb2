// Prints the sun's times of places and days, for a comparison with others' calculations. Reads lines "LATITUDE
// LONGITUDE YEAR MONTH DAY TWILIGHT" (degrees, north and east positive; twilight 0 or 1) and prints for each, in UTC,
// "SUNRISE NOON SUNSET" as seconds since the midnight that begins the day.

#include <chrono>
#include <cstdio>

#include "engine/sun/sunrise.h"

int main() {
    double latitude = 0;
    double longitude = 0;
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int twilight = 0;
    while (std::scanf("%lf %lf %d %u %u %d", &latitude, &longitude, &year, &month, &day, &twilight) == 6) {
        nimbry::clsSunrise sun;
        sun.Latitude = latitude;
        sun.Longitude = -longitude;
        sun.twilight = twilight != 0;
        sun.DateDay =
            std::chrono::local_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}};
        sun.CalculateSun();
        for (const auto& time : {sun.Sunrise(), sun.SolarNoon(), sun.Sunset()})
            std::printf("%lld ", static_cast<long long>((*time - sun.DateDay).count()));
        std::printf("\n");
    }
}
