#include <cstdint>
#include <iostream>
#include <string>

#include "engine/displays/box_list.h"
#include "engine/station/group_layout.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/world.h"

// The law: whatever the digits of frames with right checksums say, a running copy goes on, and no box shows what is no
// number. The one way to its end is a sound outdoor humidity of 0.

namespace nimbry::test {
namespace {

using fuzz::Input;

/// A frame with up to 15 digits overwritten: a byte for the kind and count, then two bytes a digit.
Bytes next_frame(Input& input, const StationReadings& station) {
    const int head = input.next();
    const bool lone = (head & 0x80) != 0;
    Bytes frame = lone ? write_lone_wind(station) : write_train(station);
    for (int n = head & 0x0F; n > 0; --n) {
        const int where = input.next();
        const int what = input.next();
        const GroupSpan& span = lone ? span_cf : train_spans[static_cast<std::size_t>(what >> 4) % train_spans.size()];
        set_digit(frame, span.tag, 3 + where % (2 * static_cast<int>(span.length) - 4), what & 0x0F);
    }
    seal(frame);
    return frame;
}

void fail(const std::string& why) {
    std::cerr << why << '\n';
    fuzz::expect(false);
}

bool says_humidity_zero(const WeatherState& state) {
    return state.readings.rdathumidity == "00";
}

void check_boxes(WeatherState& state) {
    for (const NamedBox& named : named_boxes(state))
        for (const char* wrong : {"nan", "inf", "NaN", "Inf"})
            if (named.box->text.find(wrong) != std::string::npos)
                fail(std::string(named.name) + " shows " + named.box->text);
}

}  // namespace
}  // namespace nimbry::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace nimbry;
    using namespace nimbry::test;
    using namespace std::chrono_literals;

    Input input(data, size);
    World world;
    const int units = input.next();
    world.files.put("Nimbry.ini",
                    std::string("[Main]\r\nHasRun=True\r\n") + ((units & 1) != 0 ? "fTempF=True\r\n" : "") +
                        ((units & 2) != 0 ? "fWindms=True\r\n" : "") + ((units & 4) != 0 ? "fBarinhg=True\r\n" : "") +
                        ((units & 8) != 0 ? "fRainin=True\r\n" : "") + ((units & 16) != 0 ? "newchill=False\r\n" : "") +
                        ((units & 32) != 0 ? "tmidnight=True\r\n" : ""));
    world.start();
    world.send_train();

    StationReadings station;
    for (int n = 0; n < 40 && !input.empty() && !world.engine.gone(); ++n) {
        station.clock = station_moment(world.clock.computer_time());
        world.deliver(next_frame(input, station));
        if (world.engine.gone() && !says_humidity_zero(world.state()))
            fail("the copy has ended: " + world.state().run.ExitWord);
        check_boxes(world.state());
        world.run_for(9900ms);
    }
    return 0;
}
