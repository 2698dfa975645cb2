#include "engine/records/almanac_roll.h"

#include <algorithm>

#include "engine/core/file_steps.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/publish/local_save.h"
#include "engine/records/almanac_file.h"
#include "engine/records/archive_names.h"

namespace nimbry {
namespace {

using std::chrono::days;

constexpr std::string_view late_first = "Your almanac has been archived but it appears to contain errors.\r\n";

void warn_of_late_archive(Copy& copy) {
    copy.state.records.alarchmessage =
        std::string(late_first) + "Check the archived almanac and the raw almanac (nbextreme.log) if it exists";
    copy.ports.notices.balloon({.title = "Almanac Archiving Error",
                                .text = std::string(late_first) +
                                        "You should check both the archived almanac\r\nand the raw almanac "
                                        "(nbextreme.log) if it exists",
                                .icon = "!"});
}

// True while the rows do not outnumber the days of the month that the change has come to.
bool month_in_progress(Copy& copy, int day) {
    const std::string name(almanac_log);
    if (!copy.ports.files.exists(name)) return false;
    std::string text;
    require(copy.ports.files.read(name, text));
    return count_almanac_rows(text) <= day;
}

void roll_local(Copy& copy, const std::string& archive) {
    const std::string twin = local_twin(copy.state.publish, almanac_log);
    if (twin.empty()) return;
    if (!copy.ports.files.exists(twin)) {
        copy.log.event(" Local Save copy of almanac not archived and rolled over");
        return;
    }
    move_to_archive(copy.ports.files, twin, local_path(copy.state.publish, archive));
}

void roll(Copy& copy, CivilTime now) {
    WeatherState& state = copy.state;
    const int day = parts_of(now + std::chrono::minutes{whole_number(state.settings.alRoll)}).day;
    if (day != 1) {
        state.records.alarchmessage.clear();
        if (month_in_progress(copy, day)) {
            state.records.alarchiving = false;
            return;
        }
        warn_of_late_archive(copy);
    }
    // A rename must not pull the file from under an upload or a mail that reads it.
    wait_for(copy, "emailbusy, uloadftpbusy, wubusy",
             [&] { return !state.publish.emailbusy && !state.publish.uloadftpbusy && !state.publish.wubusy; });
    const std::string name(almanac_log);
    if (!copy.ports.files.exists(name)) {
        copy.log.event(" Almanac not archived and rolled over as the raw archive file doesn't exist");
        return;
    }
    // Kept on purpose: month and year come from two clocks with two offsets.
    const std::string archive = archive_name("al", now - days{25}, copy.ports.clock.computer_time() - days{1});
    move_to_archive(copy.ports.files, name, archive);
    copy.log.event(" Almanac successfully archived and rolled over");
    roll_local(copy, archive);
}

}  // namespace

void alRoll(Copy& copy) {
    try {
        roll(copy, *copy.state.readings.dtvar);
    } catch (const RunTimeError& error) {
        copy.state.records.alarchiving = false;
        copy.log.event(" Error archiving almanac: " + std::string(description(error.number)));
    }
}

}  // namespace nimbry
