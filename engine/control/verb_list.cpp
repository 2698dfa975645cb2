#include "engine/control/verb_list.h"

#include <algorithm>
#include <array>

namespace nimbry {

namespace {

constexpr std::array verbs{
    VerbUsage{"boxes", "[NAME...] [--json]", "the boxes of the windows with their texts"},
    VerbUsage{"status", "[--json]", "role, station time, serial line and what it has delivered"},
    VerbUsage{"notices", "[--json]", "the last 50 notices, oldest first"},
    VerbUsage{"panel", "[--once] [--below TEXT]",
              "the readings as a table, drawn again when they change, until Ctrl-C; TEXT stands below it"},
    VerbUsage{"extremes", "", "the records of today and of yesterday"},
    VerbUsage{"summary", "", "the summary of the month in progress"},
    VerbUsage{"graph",
              "temperature|humidity|wind|barometer|rain|direction [--svg FILE | --png FILE] "
              "[--size WxH, 160x100 to 10000x10000]",
              "a picture of the last day"},
    VerbUsage{"tag", "NAME...", "what tags of the templates print now, named without tildes"},
    VerbUsage{"get", "SECTION KEY", "the value in force of a key of Nimbry.ini"},
    VerbUsage{"set", "SECTION KEY VALUE", "sets a key in Nimbry.ini and in the running copy"},
    VerbUsage{"generate", "", "makes the pages now; returns when they are there"},
    VerbUsage{"force", "ftp|mail|weather", "uploads, mails or reports now; returns when that has ended"},
    VerbUsage{"install-templates", "", "copies the default templates that are missing into the folder"},
    VerbUsage{"units",
              "[--temp C|F] [--baro mB|hPa|inHg] [--rain mm|in] [--wind ms|kph|mph|knots] [--rollover first|last] "
              "[--newchill yes|no] [--yes]",
              "the units of display, the almanac's rollover day, the wind chill"},
    VerbUsage{"changeover", "midnight|9|10 [--yes]", "when the weather day ends"},
    VerbUsage{"location", "LAT LON|none", "where the station stands, in decimal degrees, south and west negative"},
    VerbUsage{"apply", "[comms|units|internet|alarms|location|marquee]",
              "does what a dialog's accept button does with the settings as they are"},
    VerbUsage{"prune-log", "[--yes]", "keeps the last 10 lines of the program log"},
    VerbUsage{"stop", "", "the menu's exit; returns when the copy has gone"},
};

}  // namespace

std::span<const VerbUsage> verb_list() {
    return verbs;
}

const VerbUsage* verb_named(std::string_view name) {
    const auto* verb = std::find_if(verbs.begin(), verbs.end(), [&](const VerbUsage& v) { return v.name == name; });
    return verb == verbs.end() ? nullptr : verb;
}

std::string usage_line(const VerbUsage& verb) {
    std::string line = "usage: nimbryctl [--dir DIR] " + std::string(verb.name);
    if (!verb.arguments.empty()) line += ' ' + std::string(verb.arguments);
    return line;
}

}  // namespace nimbry
