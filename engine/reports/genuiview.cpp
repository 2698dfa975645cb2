#include "engine/reports/genuiview.h"

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/publish/aprs_packet.h"
#include "engine/reports/raw_line.h"
#include "engine/reports/resolvtag.h"

namespace nimbry {

std::string ui_moment(const Readings& readings) {
    const std::string year = readings.dtvar ? padded(parts_of(*readings.dtvar).year, 4) : "";
    return readings.rdatmonth + " " + numtext(Val(readings.rdatday)) + " " + year + " " +
           readings.rdattime.substr(0, 5);
}

void genuiview(Copy& copy) {
    const auto busy = copy.state.reports.genuibusy.try_hold();
    if (!busy) return;
    tagged("genuiview", [&] {
        Files& files = copy.ports.files;
        refresh_tag_sources(copy);
        const std::string weather = weather_string(copy.state);
        rewrite_if_free(files, "nimbryUI.txt", ui_moment(copy.state.readings) + "\r\n" + weather + "\r\n");
        require(files.rewrite("APRS.txt", aprs_packet(copy.state) + "\r\n"));
        copy.state.reports.new_data = false;
    });
}

}  // namespace nimbry
