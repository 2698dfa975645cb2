#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "tests/world/world.h"

namespace nimbry::test {

/// A civil time of 2026, or of another year.
inline CivilTime at(int month, int day, int hour, int minute, int second = 0, int year = 2026) {
    return *civil_time({year, month, day, hour, minute, second});
}

/// A day file of so many lines: its stamp, then ones.
inline std::string day_text(const std::string& stamp, int lines) {
    std::string text = stamp + "\r\n";
    for (int n = 2; n <= lines; ++n) text += "1\r\n";
    return text;
}

/// A copy that has run before, whose station and computer show the same time, fed a train every ten seconds.
class WeatherDays {
public:
    /// `keys` are lines for the section `Main` of its settings, and whatever sections follow.
    explicit WeatherDays(CivilTime start, const std::string& keys = {}) : world(start) {
        world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n" + keys);
    }
    void start() { world.start(); }
    /// A train at this station time; the computer shows the same.
    void train(CivilTime station, const StationReadings& readings = {}) {
        world.clock.set_computer_time(station);
        world.send_train(readings, station);
    }
    /// Trains every ten seconds from one time to another, both included.
    void trains(CivilTime from, CivilTime to, const StationReadings& readings = {}) {
        for (CivilTime t = from; t <= to; t += std::chrono::seconds{10}) train(t, readings);
    }
    /// How many changeovers the program log tells of.
    int changeovers() { return logged(" Changeover process completed successfully"); }
    /// How many lines of the program log end like this.
    int logged(const std::string& ending) {
        const auto log = world.log();
        return static_cast<int>(
            std::count_if(log.begin(), log.end(), [&](const std::string& line) { return line.ends_with(ending); }));
    }
    /// The rows of an almanac.
    std::vector<std::string> rows(const std::string& name = "nbextreme.log") {
        std::vector<std::string> found;
        for (const std::string& line : world.lines(name))
            if (!line.empty() && line.front() >= '0' && line.front() <= '9') found.push_back(line);
        return found;
    }
    /// Takes over the files of another copy, as a restart in the same folder does.
    void inherit(const World& other) { inherit(other.files); }
    void inherit(const MemoryFiles& disk) {
        for (const std::string& name : disk.names())
            if (name != "nbyprog.log") world.files.put(name, disk.contents(name));
    }
    World world;
};

/// The keys of the US units, for a test's settings.
inline const std::string us_units = "fTempF=True\r\nfBarinhg=True\r\nfRainin=True\r\nfWindmph=True\r\n";

}  // namespace nimbry::test
