// Any bytes as the two files of the day. The laws: a file reads as a record or is refused with one of the two errors
// that a day file can have; a record that was read is written as a file that reads as the same record; and a copy that
// starts with the two gets going: each file ends one start at most, with a box or with the report of its routine.
#include "engine/records/day_files.h"

#include <chrono>
#include <string>

#include "engine/core/exits.h"
#include "engine/derived/dates.h"
#include "engine/records/extremes_display.h"
#include "engine/records/load_extremes.h"
#include "engine/records/save_extremes.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/bare_copy.h"

namespace {

using namespace nimbry;
using fuzz::expect;

/// Reads with `read`, and what it makes of it again. True when the file is sound.
template <class Read, class Text>
bool reads_as_itself(const std::string& file, Read read, Text text) {
    try {
        const std::string written = text(day_file_stamp(file), read(file));
        expect(text(day_file_stamp(written), read(written)) == written);
        return true;
    } catch (const RunTimeError& error) {
        expect(error.number == ErrorNumber::past_end || error.number == ErrorNumber::type_mismatch);
        return false;
    }
}

/// A start with these files. True when it gets going; then the day is saved, as every ten minutes.
bool starts(const test::MemoryFiles& disk, CivilTime now, test::BareCopy& world) {
    for (const std::string& name : disk.names()) world.files.put(name, disk.contents(name));
    world.clock.set_computer_time(now);
    world.state.readings.dtvar = now;
    world.state.run.fullystarted = true;
    try {
        resetextremes(world.copy);
        SaveExtremes(world.copy);
    } catch (const UnrecoverableError& error) {
        expect(error.tag == "ResYesterday");
        return false;
    } catch (const WaitCancelled&) {
        expect(world.state.run.ProgramClosing);
        return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int clock = input.next();
    const std::string today = input.text_to_nul();
    const std::string yesterday = input.rest();

    reads_as_itself(today, read_today, today_text);
    reads_as_itself(yesterday, read_yesterday, yesterday_text);

    // The first byte turns the clock: most dates in a file would be a day past otherwise.
    CivilTime now = test::VirtualClock::usual_start;
    if (const auto stamp = parse_stamp(std::string_view(today).substr(0, today.find_first_of("\r\n"))))
        now = *stamp + std::chrono::minutes{clock * 6};
    test::VirtualClock disk_clock;
    test::MemoryFiles disk(disk_clock);
    disk.put(std::string(today_file), today);
    disk.put(std::string(yesterday_file), yesterday);
    for (int start = 0; start < 3; ++start) {
        test::BareCopy world;
        if (starts(disk, now, world)) return 0;
        for (const std::string& name : disk.names()) disk.take_away(name);
        for (const std::string& name : world.files.names()) disk.put(name, world.files.contents(name));
    }
    expect(false);
    return 0;
}
